// How NaiveBayesModel scores one case.

#include <cstddef>
#include <memory>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/BorrowedText.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "naivebayes/NaiveBayesModel.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/PredictorValues.h"
#include "naivebayes/ResultReuse.h"

namespace {

/// The caller's result when it is a classification result of this kind; otherwise a new one in its place.
ScoreClsResult& ResultToFill(ScoreResult*& result, const ScoreDictVar* target) {
    if (result != nullptr && result->GetScoreResultType() == ScoreResult::NaiveBayesClsResult) {
        if (auto* reusable = dynamic_cast<ScoreClsResult*>(result)) return *reusable;
    }
    return nbscore::ReplaceResult<NaiveBayesClsResult>(result, target);
}

/// Changes the prediction object that a result has already; false when it is none of the class that the
/// target's storage asks for.
bool UpdatePrediction(ScoreValue* prediction, bool numeric, const ScoreValue& category) {
    if (numeric) {
        auto* number = dynamic_cast<NumericValue*>(prediction);
        if (number == nullptr) return false;
        number->SetDoubleValue(category.GetDouble());
        return true;
    }
    auto* text = dynamic_cast<StringValue*>(prediction);
    if (text == nullptr) return false;
    text->SetString(nbscore::BorrowedText(category).Get());
    return true;
}

std::unique_ptr<ScoreValue> MakePrediction(bool numeric, const ScoreValue& category) {
    if (numeric) return std::make_unique<NumericValue>(category.GetDouble());
    return std::make_unique<StringValue>(category.GetString());
}

void SetPredictedValue(ScoreResult& result, const ScoreDictVar& target, const ScoreValue& category) {
    const bool numeric = target.GetStorageType() == ScoreDictVar::NumericStorage;
    ScoreValue* prediction = nbscore::ChangeablePrediction(result);
    if (prediction != nullptr && UpdatePrediction(prediction, numeric, category)) return;
    nbscore::ReplacePrediction(result, MakePrediction(numeric, category));
}

}  // namespace

MCScore::MCStatus NaiveBayesModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    if (!dictVarIndexReady.IsDone() && caseRecord.IsIndexed()) SetUpDictVarIndex(record, derivedInRecord);
    ScoreClsResult& filled = ResultToFill(result, targetVar);
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);

    const std::vector<double> posteriors = ComputePosteriors(
        nbscore::EncodePredictors(caseRecord, derivedRecord, predictorVarNames.size(), predictorVars, encoders));
    const std::size_t best = nbscore::PredictedCategory(posteriors, targetCounts);

    if (!predictionOnly) {
        filled.SetConfidence(posteriors[best]);
        for (std::size_t k = 0; k < posteriors.size(); ++k)
            filled.AddValuePercent(targetValues[k], posteriors[k]);
    }
    const ScoreValue& predicted = nbscore::Existing(targetValues[best]);
    SetPredictedValue(filled, nbscore::Existing(targetVar), predicted);
    return MCScore::MCStatus();
}

// A case without any usable predictor keeps the priors as they stand, which need not sum to one. A zero sum
// is not guarded: the quotients are what division by zero gives.
std::vector<double> NaiveBayesModel::ComputePosteriors(const nbscore::EncodedCase& encoded) const {
    std::vector<double> probabilities = targetProbabilities;
    if (encoded.usable == 0) return probabilities;

    double sum = 0.0;
    for (std::size_t k = 0; k < targetValues.size(); ++k) {
        probabilities[k] = ComputePXYPY(encoded.codes, static_cast<int>(k));
        sum += probabilities[k];
    }
    for (std::size_t k = 0; k < targetValues.size(); ++k)
        probabilities[k] /= sum;
    return probabilities;
}

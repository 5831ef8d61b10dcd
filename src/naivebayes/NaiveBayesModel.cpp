#include "naivebayes/NaiveBayesModel.h"

#include <cstddef>
#include <memory>
#include <ostream>
#include <span>

#include "framework/CountedNoun.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/BorrowedText.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/ScoringCall.h"

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

NaiveBayesModel::NaiveBayesModel() = default;

NaiveBayesModel::~NaiveBayesModel() = default;

void NaiveBayesModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool NaiveBayesModel::GetPredictionOnly() const {
    return predictionOnly;
}

ScoreModel::ModelType NaiveBayesModel::GetModelType() {
    return ScoreModel::NaiveBayesModel;
}

ScoreDictionary* NaiveBayesModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, target.GetVar(), role);
}

void NaiveBayesModel::SetTargetVar(const ScoreDictVar* targetVar) {
    target.Set(targetVar);
}

void NaiveBayesModel::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    classifier.AddPredictor(name, var);
}

void NaiveBayesModel::AddEncoder(INBVeskEncoder* encoder) {
    classifier.AddEncoder(std::unique_ptr<INBVeskEncoder>(encoder));
}

void NaiveBayesModel::SetPredCounts(int /*predictorIndex*/, const NBayesInputBase::Matrix& counts) {
    classifier.AddTable(counts);
}

void NaiveBayesModel::SetTargetCounts(const std::vector<double>& counts) {
    classifier.SetTargetCounts(counts);
    classifier.SetPriors();
}

void NaiveBayesModel::SetPredictorVarNames(const std::vector<std::string>& names) {
    classifier.SetPredictorNames(names);
}

std::vector<std::string> NaiveBayesModel::GetPredictorVarNames() const {
    return classifier.GetPredictorNames();
}

void NaiveBayesModel::SetThreshold(double newThreshold) {
    classifier.SetThreshold(newThreshold);
}

void NaiveBayesModel::SetNeedDerivedPredictor(bool need) {
    needDerivedPredictor = need;
}

bool NaiveBayesModel::NeedDerivedPredictor() const {
    return needDerivedPredictor;
}

MCScore::MCStatus NaiveBayesModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    if (!dictVarIndexReady.IsDone() && caseRecord.IsIndexed()) SetUpDictVarIndex(record, derivedInRecord);
    ScoreClsResult& filled = ResultToFill(result, target.GetVar());
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);
    FillResult(filled, ComputeProbabilities(caseRecord, derivedRecord));
    return MCScore::MCStatus();
}

void NaiveBayesModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord) {
    dictVarIndexReady.Do([&] {
        nbscore::RememberRecordPositions(*record, classifier.GetPredictorNames(), GetDictionary(),
                                         GetTransformationDictionary(), derivedInRecord);
    });
}

// A case without any usable predictor keeps the priors as they stand.
std::vector<double> NaiveBayesModel::ComputeProbabilities(const ScoreCaseRecord& record,
                                                          const ScoreCaseRecord* derivedRecord) const {
    const nbscore::EncodedCase encoded = classifier.Encode(record, derivedRecord);
    std::vector<double> probabilities = classifier.GetPriors();
    if (encoded.usable > 0) {
        classifier.ComputePosteriors(encoded, std::span(probabilities).first(target.GetCategories().size()));
    }
    return probabilities;
}

void NaiveBayesModel::FillResult(ScoreClsResult& result, const std::vector<double>& probabilities) const {
    const std::size_t best = nbscore::PredictedCategory(probabilities, classifier.GetTargetCounts());
    const std::vector<ScoreValue*>& categories = target.GetCategories();
    if (!predictionOnly) {
        result.SetConfidence(probabilities[best]);
        for (std::size_t k = 0; k < probabilities.size(); ++k)
            result.AddValuePercent(categories[k], probabilities[k]);
    }
    const ScoreValue& predicted = nbscore::Existing(categories[best]);
    SetPredictedValue(result, nbscore::Existing(target.GetVar()), predicted);
}

void NaiveBayesModel::Display(std::ostream& out) const {
    out << "\nBegin Display of NaiveBayesModel." << std::endl;
    out << "Input variable names: ";
    nbscore::DumpList(out, classifier.GetPredictorNames());
    out << std::endl;
    out << "Threshold value = " << nbscore::DumpNumber(classifier.GetThreshold()) << " Only prediction? "
        << nbscore::DumpFlag(predictionOnly) << "." << std::endl;
    classifier.DisplayEncoders(out);
    target.Display(out);
    classifier.DisplayTargetCounts(out);
    out << std::endl;
    out << "Target probabilities: ";
    nbscore::DumpList(out, classifier.GetPriors());
    out << std::endl;
    out << "Dict var index set up? " << nbscore::DumpFlag(dictVarIndexReady.IsDone()) << std::endl;
    classifier.DisplayPredictors(out);
    out << "End of NaiveBayesModel display." << std::endl;
}

nbscore::ScoringObstacle NaiveBayesModel::FindScoringObstacle() const {
    if (nbscore::ScoringObstacle obstacle = FindTargetObstacle()) return obstacle;
    return classifier.FindObstacle(target);
}

nbscore::ScoringObstacle NaiveBayesModel::FindTargetObstacle() const {
    using nbscore::ScoringObstacle;
    if (target.GetVar() == nullptr) return nbscore::NoTargetVariable();
    const std::string named = "The target variable \"" + target.DescribeName() + "\"";
    const std::size_t numCategories = target.GetCategories().size();
    const std::size_t numCounts = classifier.GetTargetCounts().size();
    if (numCategories == 0) return {ScoringObstacle::TargetValuesMissing, named + " declares no values."};
    if (numCounts == 0) return {ScoringObstacle::CountsMissing, named + " has no counts."};
    if (numCounts > numCategories) {
        return {ScoringObstacle::Other, named + " declares " + nbscore::CountedNoun(numCategories, "value") +
                                            ", but the model has " + nbscore::CountedNoun(numCounts, "target count") +
                                            "."};
    }
    return {};
}

nbscore::ModelDescription NaiveBayesModel::Describe() const {
    return {.target = target.DescribeName(),
            .targetCategories = target.DescribeCategories(),
            .classifiers = {classifier.Describe()}};
}

nbscore::ModelTables NaiveBayesModel::GetTables() const {
    return {.readsDerivedFields = needDerivedPredictor,
            .target = target.GetVar(),
            .targetCategories = {target.GetCategories().begin(), target.GetCategories().end()},
            .classifiers = {classifier.GetTables(classifier.GetPriors())}};
}

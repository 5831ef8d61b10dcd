#include "host/ClassifierBatch.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/MCMV.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

constexpr std::size_t probabilitiesAtOnce = std::size_t{1} << 16;
constexpr std::size_t mostCasesAtOnce = 1024;

/// A prediction is of the class that the target's storage asks for, as in the model's own results.
std::shared_ptr<const ScoreValue> MakePrediction(const ScoreDictVar& target, const ScoreValue& category) {
    if (target.GetStorageType() == ScoreDictVar::NumericStorage) {
        return std::make_shared<NumericValue>(category.GetDouble());
    }
    return std::make_shared<StringValue>(category.GetString());
}

}  // namespace

ClassifierBatch::ClassifierBatch(std::shared_ptr<const BatchEngine> classifier, const ScoreDictVar& target,
                                 bool onlyPrediction)
    : BatchCasesOf(std::move(classifier)),
      predictionOnly(onlyPrediction),
      numCategories(GetEngine().GetNumbersPerCase()) {
    for (const ScoreValueLabel& label : target.GetValueLabelSet()->GetValueLabels())
        predictions.push_back(MakePrediction(target, *label.GetValue()));
    arranged.assign(predictions.size(), MCMV::gMissingValue);
}

std::size_t ClassifierBatch::GetCasesAtOnce() const {
    return std::clamp<std::size_t>(probabilitiesAtOnce / numCategories, 16, mostCasesAtOnce);
}

void ClassifierBatch::Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) {
    predicted.resize(cases);
    confidence.resize(cases);
    probabilities.resize(predictionOnly ? 0 : cases * numCategories);
    AnswerColumns answers;
    answers.predicted = predicted;
    answers.confidence = confidence;
    answers.probabilities = probabilities;
    GetEngine().ScoreRows(rows, cases, answers);
}

std::span<const double> ClassifierBatch::GetProbabilities(std::size_t entry) const {
    if (predictionOnly) return {};
    return std::span(probabilities).subspan(entry * numCategories, numCategories);
}

ScoredCase ClassifierBatch::GetCase(std::size_t entry) {
    ScoredCase scored;
    scored.prediction = predictions[static_cast<std::size_t>(predicted[entry])].get();
    scored.confidence = confidence[entry];
    if (predictionOnly) return scored;
    std::ranges::copy(GetProbabilities(entry), arranged.begin());
    scored.probabilities = arranged;
    return scored;
}

bool ClassifierBatch::HasNonFiniteNumber(std::size_t entry) const {
    return std::ranges::any_of(GetProbabilities(entry), [](double number) { return !std::isfinite(number); });
}

}  // namespace nbscore

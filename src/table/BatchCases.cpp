#include "table/BatchCases.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "framework/MCMV.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

constexpr std::size_t numbersAtOnce = std::size_t{1} << 16;
constexpr std::size_t mostCasesAtOnce = 1024;
/// Of a single classifier; a set of very many sub-models is scored case by case.
constexpr std::size_t fewestCasesAtOnce = 16;

/// A prediction is of the class that the target's storage asks for, as in the model's own results.
std::unique_ptr<const ScoreValue> MakePrediction(const ScoreDictVar& target, const ScoreValue& category) {
    if (target.GetStorageType() == ScoreDictVar::NumericStorage) {
        return std::make_unique<NumericValue>(category.GetDouble());
    }
    return std::make_unique<StringValue>(category.GetString());
}

template <typename Scorer>
std::vector<std::string> GetFieldsOf(const Scorer& scorer, const std::vector<std::size_t>& inputsOfReaders) {
    std::vector<std::string> fields;
    for (const std::size_t input : inputsOfReaders)
        fields.push_back(scorer.GetInputs()[input].name);
    return fields;
}

}  // namespace

BatchCases::BatchCases(std::shared_ptr<const Parts> sharedParts, std::vector<SubModelScore> subModelDescriptors,
                       bool onlyPrediction)
    : parts(std::move(sharedParts)),
      predictionOnly(onlyPrediction),
      arranged(parts->predictions.size(), MCMV::gMissingValue),
      subModels(std::move(subModelDescriptors)) {}

std::optional<BatchCases> BatchCases::Find(const ScoreModel& scorable, bool onlyPrediction) {
    const auto* const tables = dynamic_cast<const ModelSelfTables*>(&scorable);
    if (tables == nullptr || dynamic_cast<const ModelSelfDescription*>(&scorable) == nullptr) return std::nullopt;
    try {
        if (tables->GetTables().isSet) return OfSet(scorable, onlyPrediction);
        return OfClassifier(scorable, onlyPrediction);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

BatchCases BatchCases::OfClassifier(const ScoreModel& model, bool onlyPrediction) {
    const BatchScorer scorer(model);
    auto made = std::make_shared<Parts>(
        Parts{scorer, GetFieldsOf(scorer, scorer.GetInputsOfPredictors()), {}, scorer.GetCategories().size()});
    const ScoreDictVar& target = *model.GetTargetVar();
    for (const ScoreValueLabel& label : target.GetValueLabelSet()->GetValueLabels())
        made->predictions.push_back(MakePrediction(target, *label.GetValue()));
    return {std::move(made), {}, onlyPrediction};
}

BatchCases BatchCases::OfSet(const ScoreModel& model, bool onlyPrediction) {
    const SubModelBatchScorer scorer(model);
    std::vector<SubModelScore> subModels;
    for (const ClassifierDescription& subModel :
         dynamic_cast<const ModelSelfDescription&>(model).Describe().classifiers)
        subModels.push_back({subModel.name, MCMV::gMissingValue, subModel.assessmentMean, subModel.assessmentStdDev});
    auto made =
        std::make_shared<Parts>(Parts{scorer, GetFieldsOf(scorer, scorer.GetInputsOfReaders()), {}, subModels.size()});
    return {std::move(made), std::move(subModels), onlyPrediction};
}

bool BatchCases::ReadsDerivedFields() const {
    return std::visit([](const auto& scorer) { return scorer.ReadsDerivedFields(); }, parts->scorer);
}

RowNumber BatchCases::RowOf(std::size_t reader, std::string_view text) const {
    return std::visit([reader, text](const auto& scorer) { return scorer.RowOf(reader, text); }, parts->scorer);
}

RowNumber BatchCases::RowOf(std::size_t reader, double number) const {
    return std::visit([reader, number](const auto& scorer) { return scorer.RowOf(reader, number); }, parts->scorer);
}

std::size_t BatchCases::GetCasesAtOnce() const {
    const std::size_t fitting = numbersAtOnce / std::max<std::size_t>(parts->numbersOfCase, 1);
    return std::clamp<std::size_t>(fitting, IsSet() ? 1 : fewestCasesAtOnce, mostCasesAtOnce);
}

void BatchCases::Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) {
    numbers.resize(IsSet() || !predictionOnly ? cases * parts->numbersOfCase : 0);
    if (IsSet()) {
        SubModelColumns answers;
        answers.scores = numbers;
        std::get<SubModelBatchScorer>(parts->scorer).ScoreRows(rows, cases, answers);
        return;
    }
    predicted.resize(cases);
    confidence.resize(cases);
    ClassificationColumns answers;
    answers.predicted = predicted;
    answers.confidence = confidence;
    answers.probabilities = numbers;
    std::get<BatchScorer>(parts->scorer).ScoreRows(rows, cases, answers);
}

/// None of a single classifier where only the prediction is wanted.
std::span<const double> BatchCases::GetNumbers(std::size_t entry) const {
    if (numbers.empty()) return {};
    return std::span(numbers).subspan(entry * parts->numbersOfCase, parts->numbersOfCase);
}

ScoredCase BatchCases::GetCase(std::size_t entry) {
    const std::span<const double> ofCase = GetNumbers(entry);
    ScoredCase scored;
    if (IsSet()) {
        for (std::size_t m = 0; m < subModels.size(); ++m)
            subModels[m].score = ofCase[m];
        scored.subModels = subModels;
        return scored;
    }
    scored.prediction = parts->predictions[static_cast<std::size_t>(predicted[entry])].get();
    scored.confidence = confidence[entry];
    if (predictionOnly) return scored;
    std::ranges::copy(ofCase, arranged.begin());
    scored.probabilities = arranged;
    return scored;
}

bool BatchCases::HasNonFiniteNumber(std::size_t entry) const {
    return std::ranges::any_of(GetNumbers(entry), [](double number) { return !std::isfinite(number); });
}

}  // namespace nbscore

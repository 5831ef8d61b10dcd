#include "table/BatchCases.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "batch/BatchEngine.h"
#include "framework/MCMV.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfDescription.h"
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

std::vector<SubModelAssessment> DescribeAssessments(const ModelSelfDescription& set) {
    std::vector<SubModelAssessment> assessments;
    for (const ClassifierDescription& subModel : set.Describe().classifiers)
        assessments.push_back({subModel.assessmentMean, subModel.assessmentStdDev});
    return assessments;
}

/// A number is not finite when all bits of its exponent are set. Without a branch for each, many are looked at at once.
bool AreAllFinite(std::span<const double> numbers) {
    constexpr std::uint64_t exponent = 0x7FF0000000000000;
    std::uint64_t areAny = 0;
    for (const double number : numbers)
        areAny |= static_cast<std::uint64_t>((std::bit_cast<std::uint64_t>(number) & exponent) == exponent);
    return areAny == 0;
}

}  // namespace

BatchCases::Parts::Parts(const ScoreModel& model)
    : engine(std::make_shared<const BatchEngine>(model)), fieldsOfReaders(engine->GetFieldsOfReaders()) {
    if (engine->IsSet()) return;
    const ScoreDictVar& target = *model.GetTargetVar();
    for (const ScoreValueLabel& label : target.GetValueLabelSet()->GetValueLabels())
        predictions.push_back(MakePrediction(target, *label.GetValue()));
}

BatchCases::BatchCases(const ScoreModel& model, bool onlyPrediction)
    : parts(std::make_shared<const Parts>(model)),
      isSet(parts->engine->IsSet()),
      predictionOnly(onlyPrediction),
      numbersOfCase(parts->engine->GetNumbersPerCase()),
      arranged(parts->predictions.size(), MCMV::gMissingValue) {
    if (isSet) assessments = DescribeAssessments(dynamic_cast<const ModelSelfDescription&>(model));
}

std::optional<BatchCases> BatchCases::Find(const ScoreModel& scorable, bool onlyPrediction) {
    if (dynamic_cast<const ModelSelfDescription*>(&scorable) == nullptr) return std::nullopt;
    // The answers here say nothing of cases without a result, nor what a document's Output asks for.
    if (dynamic_cast<const ModelOutputs*>(&scorable) != nullptr) return std::nullopt;
    try {
        return BatchCases(scorable, onlyPrediction);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

bool BatchCases::ReadsDerivedFields() const {
    return parts->engine->ReadsDerivedFields();
}

FactorRow BatchCases::RowOf(std::size_t reader, std::string_view text) const {
    return parts->engine->RowOf(reader, text);
}

FactorRow BatchCases::RowOf(std::size_t reader, double number) const {
    return parts->engine->RowOf(reader, number);
}

std::vector<std::string> BatchCases::GetFieldsOfPredictors() const {
    std::vector<std::string> fields;
    for (const std::size_t input : parts->engine->GetInputsOfPredictors())
        fields.push_back(parts->engine->GetInputs()[input].name);
    return fields;
}

BatchEngine::CodePlaces BatchCases::GetCodePlaces(std::size_t predictor) const {
    return parts->engine->GetCodePlaces(predictor);
}

std::size_t BatchCases::GetCasesAtOnce() const {
    const std::size_t fitting = numbersAtOnce / std::max<std::size_t>(numbersOfCase, 1);
    return std::clamp<std::size_t>(fitting, isSet ? 1 : fewestCasesAtOnce, mostCasesAtOnce);
}

void BatchCases::Score(std::span<const std::span<const FactorRow>> rows, std::size_t cases) {
    AnswerColumns answers;
    if (!isSet) {
        predicted.resize(cases);
        confidence.resize(cases);
        answers.predicted = predicted;
        answers.confidence = confidence;
    }
    numbers.resize(isSet || !predictionOnly ? cases * numbersOfCase : 0);
    answers.probabilities = numbers;
    parts->engine->ScoreRows(rows, cases, answers);
    areAllFinite = AreAllFinite(numbers);
}

/// None of a single classifier where only the prediction is wanted.
std::span<const double> BatchCases::GetNumbers(std::size_t entry) const {
    if (numbers.empty()) return {};
    return std::span(numbers).subspan(entry * numbersOfCase, numbersOfCase);
}

ScoredCase BatchCases::GetCase(std::size_t entry) {
    const std::span<const double> ofCase = GetNumbers(entry);
    ScoredCase scored;
    if (isSet) {
        scored.scores = ofCase;
        scored.assessments = assessments;
        return scored;
    }
    scored.predictedCategory = static_cast<std::size_t>(predicted[entry]);
    scored.prediction = parts->predictions[*scored.predictedCategory].get();
    scored.confidence = confidence[entry];
    if (predictionOnly) return scored;
    if (ofCase.size() == arranged.size()) {
        scored.probabilities = ofCase;
    } else {
        std::ranges::copy(ofCase, arranged.begin());
        scored.probabilities = arranged;
    }
    return scored;
}

ScoredBatch BatchCases::GetBatch() const {
    ScoredBatch batch;
    batch.numbers = numbers;
    batch.numbersOfCase = numbers.empty() ? 0 : numbersOfCase;
    if (isSet) return batch;
    batch.predictions = parts->predictions;
    batch.predicted = predicted;
    batch.confidence = confidence;
    return batch;
}

bool BatchCases::FindNonFiniteNumber(std::size_t entry) const {
    return !AreAllFinite(GetNumbers(entry));
}

}  // namespace nbscore

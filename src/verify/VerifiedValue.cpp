#include "verify/VerifiedValue.h"

#include <memory>
#include <utility>
#include <variant>

#include "framework/NumberText.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "pmml/RefusalTable.h"
#include "table/ModelResults.h"

namespace nbscore {
namespace {

/// A sub-model's score is the probability of the target's second category.
constexpr std::size_t scoredCategory = 1;

const ScoreDictVar& RequireTarget(const ScoreModel& model) {
    const ScoreDictVar* const target = model.GetTargetVar();
    if (target == nullptr) throw UnscorableModelError(NoTargetVariable());
    return *target;
}

/// A category as the target writes it: of a target of numbers, 1.0 is 1.
std::string SpellCategory(const ScoreDictVar& target, const std::string& value) {
    if (target.GetStorageType() != ScoreDictVar::NumericStorage) return value;
    const std::optional<double> number = ReadNumber(value);
    return number ? FormatNumber(*number) : value;
}

VeskException Unsupported(const OutputDeclaration& output, const std::string& wish) {
    return MakeRefusal(Refusal::OutputFieldUnsupported, {QuoteForMessage(output.name), wish});
}

VerifiedCell CellOf(const OutputValue& value, bool isNumber) {
    if (const auto* const number = std::get_if<double>(&value)) {
        return isNumber ? VerifiedCell::OfNumber(*number) : VerifiedCell::OfText(FormatNumber(*number));
    }
    const auto* const text = std::get_if<std::string>(&value);
    return text == nullptr ? VerifiedCell::Nothing() : VerifiedCell::OfText(*text);
}

std::vector<std::string> NamesOfInputs(const ScoreModel& model) {
    const std::unique_ptr<ScoreDictionary> predictors(model.GetVarsOfRole(ScoreModel::PredictorRole));
    std::vector<ScoreDictVar*> vars;
    if (predictors != nullptr) predictors->GetAllVars(vars);
    std::vector<std::string> names;
    names.reserve(vars.size());
    for (const ScoreDictVar* var : vars) {
        names.push_back(var->GetName());
    }
    return names;
}

}  // namespace

VerifiedValueFinder::VerifiedValueFinder(const ScoreModel& scoredModel, const VerificationSuite& verified,
                                         std::optional<std::string> subModel)
    : model(scoredModel),
      suite(verified),
      subModelLabel(std::move(subModel)),
      target(RequireTarget(scoredModel)),
      categories(CategoryProbabilities(target).GetNames()) {
    if (subModelLabel && categories.size() <= scoredCategory) {
        throw UnscorableModelError("The target variable " + QuoteForMessage(target.GetName()) +
                                   " has no second value to score.");
    }
    for (std::size_t category = 0; category < categories.size(); ++category) {
        categoryNumbers.emplace(categories[category], category);
    }
    if (const auto* const asked = dynamic_cast<const ModelOutputs*>(&model)) {
        for (const OutputColumn& column : asked->GetOutputColumns()) {
            columns.emplace(column.name, columns.size());
            resultNames.push_back(column.name);
        }
    }
    for (const OutputDeclaration& output : suite.outputs) {
        if (columns.contains(output.name)) continue;
        outputs.emplace(output.name, &output);
        resultNames.push_back(output.name);
    }
    NameResults();
}

void VerifiedValueFinder::NameResults() {
    const auto add = [this](const std::string& name, const VerifiedValue& value) {
        const bool isDeclared = columns.contains(name) || outputs.contains(name);
        if (results.emplace(name, value).second && !isDeclared) resultNames.push_back(name);
    };
    if (subModelLabel) {
        add("score_" + *subModelLabel, {VerifiedValue::Kind::Score});
        add("probability_" + categories[scoredCategory], {VerifiedValue::Kind::Score});
        return;
    }
    add(target.GetName(), {VerifiedValue::Kind::Prediction});
    add("predicted_" + target.GetName(), {VerifiedValue::Kind::Prediction});
    add("confidence", {VerifiedValue::Kind::Confidence});
    for (std::size_t category = 0; category < categories.size(); ++category) {
        add("probability_" + categories[category], {VerifiedValue::Kind::Probability, category});
    }
}

VerifiedValue VerifiedValueFinder::Find(std::size_t field) const {
    try {
        return FindNamed(suite.fields[field].name);
    } catch (VeskException& refusal) {
        refusal.SetPlace(suite.GetPlaceOfField(field));
        throw;
    }
}

VerifiedValue VerifiedValueFinder::FindNamed(const std::string& name) const {
    const ScoreDictionary* const dictionary = model.GetDictionary();
    const bool isTarget = name == target.GetName();
    if (!isTarget && dictionary != nullptr && dictionary->GetVar(name) != nullptr) return {};
    const auto column = isTarget ? columns.end() : columns.find(name);
    if (column != columns.end()) return {VerifiedValue::Kind::Output, column->second};
    const auto output = isTarget ? outputs.end() : outputs.find(name);
    if (output != outputs.end()) return FindOutput(*output->second);
    if (const auto result = results.find(name); result != results.end()) return result->second;
    const std::vector<std::string> inputs = NamesOfInputs(model);
    throw MakeRefusal(
        Refusal::VerificationFieldUnknown,
        {QuoteForMessage(name), inputs.empty() ? "There are no inputs" : "Inputs are " + ListForMessage(inputs),
         ListForMessage(resultNames)});
}

VerifiedValue VerifiedValueFinder::FindOutput(const OutputDeclaration& output) const {
    if (!output.targetField.empty() && output.targetField != target.GetName()) {
        throw MakeRefusal(Refusal::OutputFieldOfOtherTarget,
                          {QuoteForMessage(output.name), QuoteForMessage(output.targetField)});
    }
    if (!output.segment.empty()) throw Unsupported(output, "segmentId");
    if (output.rank != 1) throw Unsupported(output, "a rank other than 1");
    if (output.feature == "probability") return FindProbability(output);
    if (output.feature != "predictedValue") throw Unsupported(output, "the feature " + QuoteForMessage(output.feature));
    if (subModelLabel) throw Unsupported(output, "the prediction of a sub-model, which only gives a score,");
    return {VerifiedValue::Kind::Prediction};
}

VerifiedValue VerifiedValueFinder::FindProbability(const OutputDeclaration& output) const {
    if (output.value.empty()) {
        if (!subModelLabel) return {VerifiedValue::Kind::Confidence};
        throw Unsupported(output, "the prediction of a sub-model, which only gives a score,");
    }
    const auto category = categoryNumbers.find(SpellCategory(target, output.value));
    if (category == categoryNumbers.end()) {
        throw MakeRefusal(Refusal::OutputFieldOfOtherValue,
                          {QuoteForMessage(output.name), QuoteForMessage(output.value), ListForMessage(categories)});
    }
    if (!subModelLabel) return {VerifiedValue::Kind::Probability, category->second};
    if (category->second == scoredCategory) return {VerifiedValue::Kind::Score};
    throw Unsupported(output, "a sub-model's probability of anything but the target's second value");
}

VerifiedScores::VerifiedScores(ScoreModel& scoredModel, std::optional<std::size_t> subModels)
    : model(scoredModel),
      asked(dynamic_cast<const ModelOutputs*>(&scoredModel)),
      subModelScoring(dynamic_cast<SubModelScoring*>(&scoredModel)),
      numericTarget(scoredModel.GetTargetVar()->GetStorageType() == ScoreDictVar::NumericStorage),
      numSubModels(subModels),
      probabilities(*scoredModel.GetTargetVar()) {
    if (asked != nullptr) columns = asked->GetOutputColumns();
}

void VerifiedScores::Score(const ScoreCaseRecord& record, std::size_t subModel) {
    if (numSubModels) {
        subModelScore = ScoreSubModel(record, subModel);
    } else {
        scored = &result.Score(model, record);
        scoredRecord = &record;
        outputs.clear();
    }
}

double VerifiedScores::ScoreSubModel(const ScoreCaseRecord& record, std::size_t subModel) {
    if (subModelScoring == nullptr) {
        return RequireSubModelScores(result.Score(model, record), *numSubModels).at(subModel).score;
    }
    try {
        return subModelScoring->ScoreSubModel(&record, static_cast<int>(subModel), false);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
}

VerifiedCell VerifiedScores::Get(const VerifiedValue& value) {
    if (numSubModels) return VerifiedCell::OfNumber(subModelScore);
    const ScoreClsResult& classification = RequireClassification(*scored);
    switch (value.kind) {
        case VerifiedValue::Kind::Confidence:
            if (classification.GetPrediction() == nullptr) return VerifiedCell::Nothing();
            return VerifiedCell::OfNumber(classification.GetConfidence());
        case VerifiedValue::Kind::Probability:
            return VerifiedCell::OfNumber(probabilities.Arrange(classification).at(value.number));
        case VerifiedValue::Kind::Output:
            return CellOf(GetOutput(value.number), columns.at(value.number).isNumber);
        default:
            break;
    }
    const ScoreValue* const prediction = classification.GetPrediction();
    if (prediction == nullptr) return VerifiedCell::Nothing();
    return numericTarget ? VerifiedCell::OfNumber(prediction->GetDouble())
                         : VerifiedCell::OfText(prediction->GetString());
}

const OutputValue& VerifiedScores::GetOutput(std::size_t column) {
    if (outputs.empty()) asked->ComputeOutputs(*scoredRecord, *scored, outputs);
    return outputs.at(column);
}

bool VerifiedScores::IsNumber(const VerifiedValue& value) const {
    if (value.kind == VerifiedValue::Kind::Output) return columns.at(value.number).isNumber;
    return value.kind != VerifiedValue::Kind::Prediction || numericTarget;
}

}  // namespace nbscore

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/CaseFacts.h"
#include "framework/ScoreClsResult.h"
#include "naivebayes/ModelParts.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/ScoredCase.h"
#include "standard/StandardModel.h"

/// @file
/// Models by the standard's rule for tests, made of plain lists.

namespace nbscore::test {

/// One input and the field that it reads: of counted texts, of counted numbers, or of densities.
struct StandardInput {
    std::string name;
    std::vector<std::string> texts;
    std::vector<double> numbers;
    NBayesInputBase::Matrix counts;
    std::vector<Density> densities;
    /// Without any, the field is treated as fields are by default.
    std::optional<FieldTreatmentRules> rules;
};

inline StandardInput Texts(const std::string& name, const std::vector<std::string>& texts,
                           const NBayesInputBase::Matrix& counts) {
    return {name, texts, {}, counts, {}, {}};
}

inline StandardInput Numbers(const std::string& name, const std::vector<double>& numbers,
                             const NBayesInputBase::Matrix& counts) {
    return {name, {}, numbers, counts, {}, {}};
}

inline StandardInput Densities(const std::string& name, const std::vector<Density>& densities) {
    return {name, {}, {}, {}, densities, {}};
}

/// The same input under other rules.
inline StandardInput With(StandardInput input, FieldTreatmentRules rules) {
    input.rules = std::move(rules);
    return input;
}

inline FieldTreatmentRules InvalidValues(FieldTreatmentRules::Invalid invalid) {
    FieldTreatmentRules rules;
    rules.invalid = invalid;
    return rules;
}

inline FieldTreatmentRules MissingIs(ExpressionValue replacement) {
    FieldTreatmentRules rules;
    rules.missingReplacement = std::move(replacement);
    return rules;
}

inline Density GaussianOf(double mean, double variance) {
    return {Density::Gaussian, mean, variance};
}

inline void AddInput(StandardModel& model, const StandardInput& input, const ScoreDictVar* var) {
    if (!input.densities.empty()) {
        model.AddDensities(input.name, var, input.densities);
    } else if (!input.numbers.empty()) {
        model.AddTable(input.name, var, std::make_unique<NBCatNumericEncoder>(input.numbers), input.counts);
    } else {
        model.AddTable(input.name, var, std::make_unique<NBCatStringEncoder>(input.texts), input.counts);
    }
}

/// The variable of an input: it declares no values, so that all are valid.
inline std::unique_ptr<BaseDictVar> VariableOf(const StandardInput& input) {
    if (!input.densities.empty()) return ContinuousVariable(input.name);
    return input.numbers.empty() ? TextVariable(input.name, {}) : NumberVariable(input.name, {});
}

/// A model with this target and these inputs, each of a field of its own. It owns its variables.
inline std::unique_ptr<StandardModel> MakeStandardModel(double threshold, std::unique_ptr<BaseDictVar> target,
                                                        const std::vector<double>& targetCounts,
                                                        const std::vector<StandardInput>& inputs) {
    auto model = std::make_unique<StandardModel>();
    auto dictionary = std::make_unique<BaseDictionary>();
    const ScoreDictVar* targetVar = target.get();
    dictionary->AddVar(targetVar->GetName(), target.release());
    for (const StandardInput& input : inputs)
        dictionary->AddVar(input.name, VariableOf(input).release());
    const ScoreDictionary& fields = *dictionary;
    model->SetScoreDictionary(dictionary.release());
    model->SetThreshold(threshold);
    model->SetTargetVar(targetVar);
    model->SetTargetCounts(targetCounts);
    for (const StandardInput& input : inputs)
        AddInput(*model, input, fields.GetVar(input.name));
    for (const StandardInput& input : inputs) {
        const ScoreDictVar* var = fields.GetVar(input.name);
        if (input.rules) model->AddTreatment(var, FieldTreatment(*var, *input.rules));
    }
    return model;
}

/// A case whose values are found by name: a number, a text, or nothing.
inline NamedRecord CaseOf(const std::vector<std::pair<std::string, ExpressionValue>>& values) {
    NamedRecord record;
    for (const auto& [name, value] : values) {
        if (const auto* number = std::get_if<double>(&value)) {
            record.Set(name, std::make_unique<NumericValue>(*number));
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            record.Set(name, std::make_unique<StringValue>(*text));
        }
    }
    return record;
}

inline std::unique_ptr<ScoreResult> ResultOf(ScoreModel& model, const ScoreCaseRecord& record,
                                             bool derivedInRecord = false) {
    ScoreResult* result = nullptr;
    model.GetScore(&record, result, derivedInRecord);
    return std::unique_ptr<ScoreResult>(result);
}

/// The probabilities of a case; none where it has no result.
inline std::vector<double> ProbabilitiesOf(const ScoreResult& result) {
    std::vector<double> probabilities;
    for (const auto& [value, percent] : dynamic_cast<const ScoreClsResult&>(result).GetAllValuePercent())
        probabilities.push_back(percent);
    return probabilities;
}

inline std::vector<double> ProbabilitiesOf(ScoreModel& model, const ScoreCaseRecord& record) {
    return ProbabilitiesOf(*ResultOf(model, record));
}

inline const CaseFacts& FactsOf(const ScoreResult& result) {
    return dynamic_cast<const ResultFacts&>(result).GetFacts();
}

}  // namespace nbscore::test

#include "batch/ResolvedCases.h"

#include <algorithm>
#include <memory>

#include "framework/ModelSelfTables.h"
#include "framework/TransformationDictionary.h"

namespace nbscore::test {
namespace {

/// In the order in which predictors first name them.
std::vector<std::string> InputsOf(const ScoreModel& model) {
    std::vector<std::string> names;
    for (const ClassifierTables& classifier : dynamic_cast<const ModelSelfTables&>(model).GetTables().classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            const std::string name = predictor.var->GetName();
            if (std::ranges::find(names, name) == names.end()) names.push_back(name);
        }
    }
    return names;
}

CaseValue Held(const ScoreValue* value) {
    if (value == nullptr) return {};
    if (value->GetType() == ScoreValue::Numeric) return value->GetDouble();
    return value->GetString();
}

}  // namespace

ResolvedCases::ResolvedCases(ScoreModel& scoringModel) : model(scoringModel) {
    table.names = InputsOf(model);
    table.columns.resize(table.names.size());
}

void ResolvedCases::Add(const ScoreCaseRecord& record) {
    constexpr bool derivedInRecord = false;
    ScoreResult* result = nullptr;
    model.GetScore(&record, result, derivedInRecord);
    const std::unique_ptr<ScoreResult> owner(result);
    ReadAnswer(*result, answers);

    TransformationDictionary* const transformations = model.GetTransformationDictionary();
    const ScoreCaseRecord* const derived =
        transformations == nullptr ? nullptr : transformations->GetValuesForDeriedVars(&record, model.GetDictionary());
    for (std::size_t input = 0; input < table.names.size(); ++input) {
        const ScoreValue* value = record.GetValueByName(table.names[input]);
        if (value == nullptr && derived != nullptr) value = derived->GetValueByName(table.names[input]);
        table.columns[input].push_back(Held(value));
    }
    ++table.cases;
}

Answers ResolvedCases::GetAnswers() const {
    Answers all = answers;
    CountValues(model, table, all);
    return all;
}

}  // namespace nbscore::test

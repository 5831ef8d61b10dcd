#include "batch/CaseFields.h"

#include <utility>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfDescription.h"
#include "framework/SeededHash.h"

namespace nbscore {
namespace {

std::vector<const ScoreDictVar*> GetVariables(const ScoreDictionary* dictionary) {
    std::vector<ScoreDictVar*> variables;
    if (dictionary != nullptr) dictionary->GetAllVars(variables);
    return {variables.begin(), variables.end()};
}

}  // namespace

std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model) {
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return std::nullopt;
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    FieldsOfInputs fields;
    std::set<std::string> derivedInputs;
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs) {
            const bool isDerived = derived != nullptr && derived->GetVar(input.GetField()) != nullptr;
            (isDerived ? derivedInputs : fields.asTheyAre).insert(input.GetField());
        }
    }
    if (derived == nullptr) return fields;
    auto read = FindFieldsOfDerivedFields(*derived, derivedInputs);
    if (!read) return std::nullopt;
    fields.ofDerivedInputs = std::move(*read);
    return fields;
}

CaseFields::CaseFields(const ScoreModel& model, const std::function<bool(const std::string&)>& hasColumn)
    : predictors(model.GetVarsOfRole(ScoreModel::PredictorRole)), fields(GetVariables(predictors.get())) {
    numNeeded = fields.size();
    const std::optional<FieldsOfInputs> read = FindFieldsOfInputs(model);
    SeededSet<std::string> alsoRead;
    if (const auto* const outputs = dynamic_cast<const ModelOutputs*>(&model)) {
        for (std::string& name : outputs->GetOptionalFields())
            alsoRead.insert(std::move(name));
    }
    if (!read && alsoRead.empty() && model.GetTransformationDictionary() == nullptr) return;

    SeededSet<std::string> taken;
    for (const ScoreDictVar* field : fields) {
        taken.insert(field->GetName());
    }
    std::vector<const ScoreDictVar*> optional;
    const std::string target = model.GetTargetVar() == nullptr ? std::string() : model.GetTargetVar()->GetName();
    for (const ScoreDictVar* field : GetVariables(model.GetDictionary())) {
        const std::string name = field->GetName();
        const bool isTarget = name == target;
        const bool isOfDerivedInputs = read && read->ofDerivedInputs.contains(name);
        const bool isNeeded = isOfDerivedInputs && !isTarget;
        const bool isTargetOfInputs = isTarget && (isOfDerivedInputs || (read && read->asTheyAre.contains(name)));
        const bool mayBeRead = alsoRead.contains(name) || (!read && model.GetTransformationDictionary() != nullptr);
        const bool isOptional = isTargetOfInputs || (mayBeRead && hasColumn(name));
        if ((!isNeeded && !isOptional) || !taken.insert(name).second) continue;
        haveTarget = haveTarget || isTarget;
        (isNeeded ? fields : optional).push_back(field);
    }
    numNeeded = fields.size();
    fields.insert(fields.end(), optional.begin(), optional.end());
}

std::vector<std::string> CaseFields::FindLacking(const std::function<bool(const std::string&)>& hasColumn) const {
    std::vector<std::string> lacking;
    for (std::size_t i = 0; i < numNeeded; ++i) {
        if (!hasColumn(fields[i]->GetName())) lacking.push_back(fields[i]->GetName());
    }
    return lacking;
}

}  // namespace nbscore

#include "naivebayes/ScoringCall.h"

#include "framework/BaseDictionary.h"

namespace nbscore {
namespace {

void AddCopy(ScoreDictionary& dictionary, const ScoreDictVar& var) {
    const std::string name = var.GetName();  // before there is a copy that could be lost
    dictionary.AddVar(name, var.Clone());
}

}  // namespace

void RememberRecordPositions(const ScoreCaseRecord& record, const std::vector<std::string>& names,
                             const ScoreDictionary* dictionary, const TransformationDictionary* derivedFields,
                             bool derivedInRecord) {
    if (dictionary != nullptr) {
        for (const std::string& name : names) {
            if (ScoreDictVar* var = dictionary->GetVar(name)) var->SetIndex(record.GetVarIndex(name));
        }
    }
    if (derivedInRecord && derivedFields != nullptr) {
        std::vector<ScoreDictVar*> derivedVars;
        derivedFields->GetDerivedVars(derivedVars);
        for (ScoreDictVar* var : derivedVars)
            var->SetIndex(record.GetVarIndex(var->GetName()));
    }
}

const ScoreCaseRecord* ComputeDerivedValues(const ScoreModel& model, bool needed, const ScoreCaseRecord* record,
                                            bool derivedInRecord) {
    TransformationDictionary* derivedFields = model.GetTransformationDictionary();
    if (!needed || derivedFields == nullptr || derivedInRecord) return nullptr;
    return derivedFields->GetValuesForDeriedVars(record, model.GetDictionary());
}

ScoreDictionary* CopyVarsOfRole(const ScoreModel& model, const ScoreDictVar* target, ScoreModel::VarRole role) {
    auto copies = std::make_unique<BaseDictionary>();
    if (role == ScoreModel::TargetRole) {
        if (target == nullptr) return nullptr;
        AddCopy(*copies, *target);
        return copies.release();
    }
    if (model.GetDictionary() == nullptr) return nullptr;

    std::vector<ScoreDictVar*> vars;
    model.GetDictionary()->GetAllVars(vars);
    bool found = false;
    for (const ScoreDictVar* var : vars) {
        if (model.GetVarRole(var) != role) continue;
        AddCopy(*copies, *var);
        found = true;
    }
    return found ? copies.release() : nullptr;
}

ScoreValue* ChangeablePrediction(const ScoreResult& result) {
    // A result was given its prediction as a changeable object; it only shows it as a const one.
    return const_cast<ScoreValue*>(result.GetPrediction());
}

void ReplacePrediction(ScoreResult& result, std::unique_ptr<ScoreValue> prediction) {
    const std::unique_ptr<ScoreValue> replaced(ChangeablePrediction(result));
    result.SetPrediction(prediction.release());
}

}  // namespace nbscore

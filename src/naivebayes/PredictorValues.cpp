#include "naivebayes/PredictorValues.h"

#include "framework/BaseDictionary.h"
#include "framework/NumericValue.h"
#include "naivebayes/Existing.h"

namespace nbscore {
namespace {

const ScoreValue* FindValue(const ScoreCaseRecord& record, bool indexed, const ScoreCaseRecord* derivedRecord,
                            const ScoreDictVar& var) {
    const ScoreValue* value = indexed ? record.GetValueByIndex(var.GetIndex()) : record.GetValueByName(var.GetName());
    if (value == nullptr && derivedRecord != nullptr) value = derivedRecord->GetValueByName(var.GetName());
    return value;
}

/// Only a continuous variable leaves its missing values out: a categorical one has them coded like any other.
bool IsLeftOut(const ScoreDictVar& var, const ScoreValue* value) {
    return var.GetMeasureLevel() == ScoreDictVar::Continuous && var.IsMissingValue(value);
}

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

EncodedCase EncodePredictors(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                             std::size_t predictors, const std::vector<const ScoreDictVar*>& vars,
                             const std::vector<std::unique_ptr<INBVeskEncoder>>& encoders) {
    EncodedCase encoded;
    encoded.codes.assign(predictors, NumericValue::GetSysmisValue());
    const bool indexed = record.IsIndexed();
    for (std::size_t j = 0; j < predictors; ++j) {
        const ScoreDictVar& var = Existing(vars[j]);
        const ScoreValue* value = FindValue(record, indexed, derivedRecord, var);
        if (value == nullptr || IsLeftOut(var, value)) continue;
        const int code = Existing(encoders[j].get()).GetCategory(value);
        if (code < 0) continue;
        encoded.codes[j] = code;
        ++encoded.usable;
    }
    return encoded;
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

}  // namespace nbscore

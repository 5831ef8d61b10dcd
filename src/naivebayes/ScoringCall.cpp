#include "naivebayes/ScoringCall.h"

#include "framework/BaseDictionary.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/BorrowedText.h"

namespace nbscore {
namespace {

void AddCopy(ScoreDictionary& dictionary, const ScoreDictVar& var) {
    const std::string name = var.GetName();  // before there is a copy that could be lost
    dictionary.AddVar(name, var.Clone());
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
    if (!needed || derivedInRecord) return nullptr;
    TransformationDictionary* const derivedFields = model.GetTransformationDictionary();
    if (derivedFields == nullptr) return nullptr;
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

void SetPredictedValue(ScoreResult& result, const ScoreDictVar& target, const ScoreValue& category) {
    const bool numeric = target.GetStorageType() == ScoreDictVar::NumericStorage;
    ScoreValue* prediction = ChangeablePrediction(result);
    if (prediction != nullptr && UpdatePrediction(prediction, numeric, category)) return;
    ReplacePrediction(result, MakePrediction(numeric, category));
}

}  // namespace nbscore

#pragma once

#include "framework/ScoreModel.h"

namespace nbscore::test {

/// Another model without the faces that it may have beside ScoreModel.
class PlainModel : public ScoreModel {
public:
    /// @param hidden borrowed.
    explicit PlainModel(ScoreModel& hidden) : model(hidden) {}

    void SetScoreDictionary(ScoreDictionary* dictionary) override { model.SetScoreDictionary(dictionary); }
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override {
        model.SetTransformationScoreDictionary(dictionary);
    }
    bool SetVarRole(const std::string& name, VarRole role) override { return model.SetVarRole(name, role); }
    bool SetVarRole(const ScoreDictVar* var, VarRole role) override { return model.SetVarRole(var, role); }
    void SetMissingValuePolicy(MVPolicy policy) override { model.SetMissingValuePolicy(policy); }
    void SetVersionInfo(ScoreVersionInfo* version) override { model.SetVersionInfo(version); }
    void SetPredictionOnly(bool only) override { model.SetPredictionOnly(only); }
    int GetVarRole(const std::string& name) const override { return model.GetVarRole(name); }
    int GetVarRole(const ScoreDictVar* var) const override { return model.GetVarRole(var); }
    const ScoreVersionInfo* GetVersionInfo() const override { return model.GetVersionInfo(); }
    ScoreDictionary* GetVarsOfRole(VarRole role) const override { return model.GetVarsOfRole(role); }
    const ScoreDictVar* GetTargetVar() const override { return model.GetTargetVar(); }
    const ScoreDictionary* GetDictionary() const override { return model.GetDictionary(); }
    TransformationDictionary* GetTransformationDictionary() const override {
        return model.GetTransformationDictionary();
    }
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) override {
        return model.GetScore(record, result, derivedInRecord);
    }
    MVPolicy GetMissingValuePolicy() override { return model.GetMissingValuePolicy(); }
    ModelType GetModelType() override { return model.GetModelType(); }
    bool GetPredictionOnly() const override { return model.GetPredictionOnly(); }
    void Display(std::ostream& out) const override { model.Display(out); }

private:
    ScoreModel& model;
};

}  // namespace nbscore::test

#pragma once

#include <memory>
#include <string>

#include "framework/Export.h"
#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"

/// What every model does alike: keeping its dictionaries, roles, policy and version.
class SCOREFRAMEWORK_API BaseModel : public ScoreModel {
public:
    BaseModel();
    ~BaseModel() override;

    void SetScoreDictionary(ScoreDictionary* dictionary) override;
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override;
    bool SetVarRole(const std::string& name, VarRole role) override;
    bool SetVarRole(const ScoreDictVar* var, VarRole role) override;
    void SetMissingValuePolicy(MVPolicy policy) override;
    void SetVersionInfo(ScoreVersionInfo* version) override;
    int GetVarRole(const std::string& name) const override;
    int GetVarRole(const ScoreDictVar* var) const override;
    const ScoreVersionInfo* GetVersionInfo() const override;
    /// The variable that was last given the target role.
    const ScoreDictVar* GetTargetVar() const override;
    const ScoreDictionary* GetDictionary() const override;
    TransformationDictionary* GetTransformationDictionary() const override;
    MVPolicy GetMissingValuePolicy() override;

private:
    std::unique_ptr<ScoreDictionary> scoreDictionary;
    std::unique_ptr<TransformationDictionary> transformationDictionary;
    std::unique_ptr<ScoreVersionInfo> versionInfo;
    nbscore::SeededMap<std::string, VarRole> roles;
    const ScoreDictVar* targetRoleVar = nullptr;
    MVPolicy missingValuePolicy = LeaveMissingOut;
};

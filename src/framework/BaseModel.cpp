#include "framework/BaseModel.h"

namespace {

/// Setting what the model already has must not delete it.
template <class Part>
void TakeOwnership(std::unique_ptr<Part>& owned, Part* part) {
    if (owned.get() != part) owned.reset(part);
}

}  // namespace

BaseModel::BaseModel() = default;

BaseModel::~BaseModel() = default;

void BaseModel::SetScoreDictionary(ScoreDictionary* dictionary) {
    if (dictionary == scoreDictionary.get()) return;
    if (targetRoleVar != nullptr) {
        // The target goes away with the earlier dictionary: from now on it is the new one's variable of that
        // name.
        targetRoleVar = dictionary != nullptr ? dictionary->GetVar(targetRoleVar->GetName()) : nullptr;
    }
    scoreDictionary.reset(dictionary);
}

void BaseModel::SetTransformationScoreDictionary(TransformationDictionary* dictionary) {
    TakeOwnership(transformationDictionary, dictionary);
}

bool BaseModel::SetVarRole(const std::string& name, VarRole role) {
    return SetVarRole(scoreDictionary ? scoreDictionary->GetVar(name) : nullptr, role);
}

bool BaseModel::SetVarRole(const ScoreDictVar* var, VarRole role) {
    if (var == nullptr) return false;
    roles.insert_or_assign(var->GetName(), role);
    if (role == TargetRole) targetRoleVar = var;
    return true;
}

void BaseModel::SetMissingValuePolicy(MVPolicy policy) {
    missingValuePolicy = policy;
}

void BaseModel::SetVersionInfo(ScoreVersionInfo* version) {
    TakeOwnership(versionInfo, version);
}

int BaseModel::GetVarRole(const std::string& name) const {
    const auto found = roles.find(name);
    return found != roles.end() ? found->second : NoRole;
}

int BaseModel::GetVarRole(const ScoreDictVar* var) const {
    return var != nullptr ? GetVarRole(var->GetName()) : NoRole;
}

const ScoreVersionInfo* BaseModel::GetVersionInfo() const {
    return versionInfo.get();
}

const ScoreDictVar* BaseModel::GetTargetVar() const {
    return targetRoleVar;
}

const ScoreDictionary* BaseModel::GetDictionary() const {
    return scoreDictionary.get();
}

TransformationDictionary* BaseModel::GetTransformationDictionary() const {
    return transformationDictionary.get();
}

ScoreModel::MVPolicy BaseModel::GetMissingValuePolicy() {
    return missingValuePolicy;
}

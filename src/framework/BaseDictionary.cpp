#include "framework/BaseDictionary.h"

BaseDictionary::BaseDictionary() = default;

BaseDictionary::~BaseDictionary() = default;

bool BaseDictionary::AddVar(const std::string& name, ScoreDictVar* var) {
    if (var == nullptr) return false;
    if (const ScoreDictVar* present = GetVar(name); present != nullptr) {
        // Adding again what already stands under the name must not destroy it.
        if (present != var) delete var;
        return false;
    }
    variables.emplace_back(var);
    variablesByName.emplace(name, var);
    return true;
}

ScoreDictVar* BaseDictionary::GetVar(const std::string& name) const {
    const auto found = variablesByName.find(name);
    return found != variablesByName.end() ? found->second : nullptr;
}

void BaseDictionary::GetAllVars(std::vector<ScoreDictVar*>& vars) const {
    vars.clear();
    vars.reserve(variables.size());
    for (const auto& variable : variables)
        vars.push_back(variable.get());
}

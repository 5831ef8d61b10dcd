#include "framework/BaseDictionary.h"

#include <utility>

BaseDictionary::BaseDictionary() = default;

BaseDictionary::~BaseDictionary() = default;

bool BaseDictionary::AddVar(const std::string& name, ScoreDictVar* var) {
    if (var == nullptr) return false;
    const ScoreDictVar* const present = GetVar(name);
    // Adding again what already stands under the name must not destroy it.
    if (present == var) return false;
    std::unique_ptr<ScoreDictVar> owned(var);
    if (present != nullptr) return false;
    variables.push_back(std::move(owned));
    try {
        variablesByName.emplace(name, var);
    } catch (...) {
        variables.pop_back();
        throw;
    }
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

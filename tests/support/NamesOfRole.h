#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"

namespace nbscore::test {

/// The names of the variables of a role, in order; none when the model returns null.
inline std::vector<std::string> NamesOfRole(const ScoreModel& model, ScoreModel::VarRole role) {
    const std::unique_ptr<ScoreDictionary> dictionary(model.GetVarsOfRole(role));
    std::vector<ScoreDictVar*> vars;
    if (dictionary != nullptr) dictionary->GetAllVars(vars);
    std::vector<std::string> names;
    for (const ScoreDictVar* var : vars)
        names.push_back(var->GetName());
    return names;
}

}  // namespace nbscore::test

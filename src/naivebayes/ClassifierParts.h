#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"

namespace nbscore {

/// What one classifier is made of, borrowed from the model that holds it: the whole of a single model, or one of a
/// set's sub-models.
struct ClassifierParts {
    const ScoreDictVar* target;
    const std::vector<ScoreValue*>& targetCategories;
    const std::vector<double>& targetCounts;
    const std::vector<std::string>& predictorNames;
    const std::vector<const ScoreDictVar*>& predictorVars;
    const std::vector<std::unique_ptr<INBVeskEncoder>>& encoders;
    const std::vector<std::unique_ptr<NBayesInputBase>>& tables;
};

}  // namespace nbscore

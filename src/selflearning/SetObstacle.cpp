// What would stop the process when SelfLearningModel scores a case, found beforehand.
//
// Every index that scoring takes is answered for here: a change of the one is a change of the other.

#include <cstddef>
#include <string>

#include "framework/CountedNoun.h"
#include "naivebayes/PredictorObstacle.h"
#include "selflearning/SelfLearningModel.h"

using nbscore::CountedNoun;

// A set without sub-models scores every case with an empty list, whatever else it lacks. The priors of all target
// counts are computed first, even of those that no sub-model uses.
std::string SelfLearningModel::FindScoringObstacle() const {
    const auto numModels = static_cast<std::size_t>(numOfModels);
    if (targetCountsByModel.size() > thresholds.size()) {
        return "The target was counted " + CountedNoun(targetCountsByModel.size(), "time") + " for " +
               CountedNoun(numModels, "sub-model") + ": each needs its target counts once.";
    }
    if (targetProbabilitiesComputed.IsDone() && targetProbabilitiesByModel.size() < numModels) {
        return "The model has " + CountedNoun(numModels, "sub-model") + ", but was scored when it had " +
               std::to_string(targetProbabilitiesByModel.size()) + ".";
    }
    if (numModels == 0) return std::string();
    if (targetVar == nullptr) return "The model has no target variable.";
    if (targetCategories.size() < 2) {
        return "The target variable \"" + targetVar->GetName() + "\" declares " +
               CountedNoun(targetCategories.size(), "value") + ", but sub-models need two.";
    }
    for (std::size_t m = 0; m < numModels; ++m) {
        const std::string obstacle = FindSubModelObstacle(m);
        if (!obstacle.empty()) {
            return "Sub-model " + std::to_string(m) + " (\"" + modelNames[m] + "\"): " + obstacle;
        }
    }
    return std::string();
}

std::string SelfLearningModel::FindSubModelObstacle(std::size_t model) const {
    if (model >= targetCountsByModel.size() || targetCountsByModel[model].size() < 2) {
        return "The target variable \"" + targetVar->GetName() + "\" has no counts of two categories.";
    }
    return nbscore::FindPredictorsObstacle(GetParts(model));
}

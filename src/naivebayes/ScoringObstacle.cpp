// What would stop the process when NaiveBayesModel scores a case, found beforehand.

#include <string>

#include "framework/CountedNoun.h"
#include "naivebayes/NaiveBayesModel.h"
#include "naivebayes/PredictorObstacle.h"

std::string NaiveBayesModel::FindScoringObstacle() const {
    std::string obstacle = FindTargetObstacle();
    if (!obstacle.empty()) return obstacle;
    return nbscore::FindPredictorsObstacle(GetParts());
}

std::string NaiveBayesModel::FindTargetObstacle() const {
    if (targetVar == nullptr) return "The model has no target variable.";
    const std::string target = "The target variable \"" + targetVar->GetName() + "\"";
    if (targetValues.empty()) return target + " declares no values.";
    if (targetCounts.empty()) return target + " has no counts.";
    if (targetCounts.size() > targetValues.size()) {
        return target + " declares " + nbscore::CountedNoun(targetValues.size(), "value") + ", but the model has " +
               nbscore::CountedNoun(targetCounts.size(), "target count") + ".";
    }
    return std::string();
}

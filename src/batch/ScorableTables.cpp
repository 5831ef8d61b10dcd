#include "batch/ScorableTables.h"

#include <stdexcept>
#include <string>

#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfTables.h"

namespace nbscore {

ModelTables GetScorableTables(const ScoreModel& model) {
    const auto* const open = dynamic_cast<const ModelSelfTables*>(&model);
    if (open == nullptr) throw std::invalid_argument("The model does not lay its tables open.");
    if (const auto* const check = dynamic_cast<const ModelSelfCheck*>(&model)) {
        const std::string obstacle = check->FindScoringObstacle();
        if (!obstacle.empty()) throw std::invalid_argument(obstacle);
    }
    ModelTables tables = open->GetTables();
    for (const ClassifierTables& classifier : tables.classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            if (predictor.kind != PredictorTables::Foreign) continue;
            throw std::invalid_argument("The predictor \"" + predictor.var->GetName() +
                                        "\" has an encoder of an unknown class.");
        }
    }
    return tables;
}

}  // namespace nbscore

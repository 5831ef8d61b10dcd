#include "host/ReusedResult.h"

#include "host/HostError.h"
#include "host/PluginFailure.h"

namespace nbscore {

const ScoreResult& ReusedResult::Score(ScoreModel& model, const ScoreCaseRecord& record) {
    try {
        model.GetScore(&record, result, false);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
    if (result == nullptr) throw UnscorableModelError("The model gave no result for a case.");
    return *result;
}

}  // namespace nbscore

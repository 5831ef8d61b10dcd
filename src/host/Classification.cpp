#include "host/Classification.h"

#include "host/HostError.h"

namespace nbscore {

const ScoreClsResult& RequireClassification(const ScoreResult& result) {
    const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result);
    if (classification == nullptr) throw UnscorableModelError("The model's results are no classifications.");
    if (classification->GetPrediction() == nullptr) {
        throw UnscorableModelError("The model predicted no value for a case.");
    }
    return *classification;
}

}  // namespace nbscore

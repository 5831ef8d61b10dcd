#include "host/NonFiniteNumber.h"

#include <algorithm>
#include <cmath>

#include "framework/ScoreClsResult.h"
#include "host/SubModelScores.h"

namespace nbscore {

bool HasNonFiniteNumber(const ScoreResult& result) {
    if (const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result)) {
        if (!std::isfinite(classification->GetConfidence())) return true;
        return std::ranges::any_of(classification->GetAllValuePercent(),
                                   [](const auto& entry) { return !std::isfinite(entry.second); });
    }
    const std::vector<SubModelScore>* const scores = FindSubModelScores(result);
    return scores != nullptr &&
           std::ranges::any_of(*scores, [](const SubModelScore& entry) { return !std::isfinite(entry.score); });
}

}  // namespace nbscore

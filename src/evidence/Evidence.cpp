#include "evidence/Evidence.h"

#include <algorithm>

#include "evidence/ReasonRanking.h"

namespace nbscore {

void WeightRange::Widen(const std::optional<double>& weight) {
    if (!weight) return;
    lowest = lowest ? std::min(*lowest, *weight) : *weight;
    highest = highest ? std::max(*highest, *weight) : *weight;
}

std::vector<std::size_t> FindReasons(const Evidence& evidence, ReasonKind kind, std::size_t most) {
    ReasonRanking ranking(most);
    for (std::size_t j = 0; j < evidence.predictors.size(); ++j)
        ranking.Offer(j, FindDistance(evidence.predictors[j].weight, evidence.predictors[j].range, kind));
    std::vector<std::size_t> reasons;
    for (const ReasonRanking::Ranked& ranked : ranking.Get())
        reasons.push_back(ranked.predictor);
    return reasons;
}

}  // namespace nbscore

#include "evidence/Evidence.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

/// How far the weight is from the best for the category, or from the worst; nothing where that is not known.
std::optional<double> FindDistance(const PredictorEvidence& predictor, ReasonKind kind) {
    const std::optional<double>& end = kind == ReasonKind::HeldDown ? predictor.range.highest : predictor.range.lowest;
    if (!predictor.weight || !end) return std::nullopt;
    return kind == ReasonKind::HeldDown ? *end - *predictor.weight : *predictor.weight - *end;
}

}  // namespace

void WeightRange::Widen(const std::optional<double>& weight) {
    if (!weight) return;
    lowest = lowest ? std::min(*lowest, *weight) : *weight;
    highest = highest ? std::max(*highest, *weight) : *weight;
}

std::vector<std::size_t> FindReasons(const Evidence& evidence, ReasonKind kind, std::size_t most) {
    std::vector<std::pair<double, std::size_t>> distances;
    for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
        const std::optional<double> distance = FindDistance(evidence.predictors[j], kind);
        if (distance && *distance > 0.0) distances.emplace_back(-*distance, j);
    }
    const auto kept = static_cast<std::ptrdiff_t>(std::min(most, distances.size()));
    std::partial_sort(distances.begin(), distances.begin() + kept, distances.end());
    std::vector<std::size_t> reasons;
    for (std::ptrdiff_t i = 0; i < kept; ++i)
        reasons.push_back(distances[static_cast<std::size_t>(i)].second);
    return reasons;
}

}  // namespace nbscore

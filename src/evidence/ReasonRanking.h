#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "evidence/Evidence.h"

namespace nbscore {

/// How far a weight is from the best that a predictor could have said for the category, or from the worst; not above 0
/// where it is no reason.
inline double FindDistance(const std::optional<double>& weight, const WeightRange& range, ReasonKind kind) {
    const std::optional<double>& end = kind == ReasonKind::HeldDown ? range.highest : range.lowest;
    if (!weight || !end) return 0.0;
    return kind == ReasonKind::HeldDown ? *end - *weight : *weight - *end;
}

/// Keeps the predictors whose distances are the greatest; of equal ones those that come first. Its memory is used again
/// from case to case.
class ReasonRanking {
public:
    explicit ReasonRanking(std::size_t mostReasons) : most(mostReasons) {}

    void Clear() {
        distances.clear();
        predictors.clear();
    }
    /// @param predictor a higher position than those before.
    void Offer(std::size_t predictor, double distance) {
        if (!(distance > 0.0)) return;
        if (distances.size() == most) {
            if (most == 0 || distance <= distances.back()) return;
            distances.pop_back();
            predictors.pop_back();
        }
        const auto place = std::upper_bound(distances.begin(), distances.end(), distance, std::greater<>());
        predictors.insert(predictors.begin() + (place - distances.begin()), predictor);
        distances.insert(place, distance);
    }
    const std::vector<std::size_t>& GetPredictors() const { return predictors; }

private:
    std::size_t most;
    /// From the greatest down, and the predictors that they are of.
    std::vector<double> distances;
    std::vector<std::size_t> predictors;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
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
        ranked.clear();
        lowest = 0.0;
    }
    /// @param predictor a higher position than those before.
    void Offer(std::size_t predictor, double distance) {
        if (!(distance > lowest) || most == 0) return;
        if (ranked.size() < most) ranked.emplace_back();
        std::size_t place = ranked.size() - 1;
        for (; place > 0 && ranked[place - 1].distance < distance; --place)
            ranked[place] = ranked[place - 1];
        ranked[place] = {distance, predictor};
        if (ranked.size() == most) lowest = ranked.back().distance;
    }

    struct Ranked {
        double distance = 0.0;
        std::size_t predictor = 0;
    };
    /// From the greatest distance down.
    const std::vector<Ranked>& Get() const { return ranked; }

private:
    std::size_t most;
    std::vector<Ranked> ranked;
    /// What a distance must be above to be kept.
    double lowest = 0.0;
};

}  // namespace nbscore

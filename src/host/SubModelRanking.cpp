#include "host/SubModelRanking.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace nbscore {
namespace {

bool IsHigher(double score, double other) {
    return std::isnan(other) ? !std::isnan(score) : score > other;
}

}  // namespace

const std::vector<std::size_t>& SubModelRanking::Rank(std::span<const SubModelScore> scores) {
    positions.resize(scores.size());
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    if (!limit) return positions;

    const auto comesFirst = [&scores](std::size_t left, std::size_t right) {
        const double leftScore = scores[left].score;
        const double rightScore = scores[right].score;
        return IsHigher(leftScore, rightScore) || (!IsHigher(rightScore, leftScore) && left < right);
    };
    const std::size_t kept = std::min(*limit, positions.size());
    const auto end = positions.begin() + static_cast<std::ptrdiff_t>(kept);
    std::partial_sort(positions.begin(), end, positions.end(), comesFirst);
    positions.resize(kept);
    return positions;
}

}  // namespace nbscore

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

/// @file
/// Which sub-models of a case score highest.

namespace nbscore {

/// A NaN is lower than any other score.
inline bool IsHigherScore(double left, double right) {
    return left > right || (std::isnan(right) && !std::isnan(left));
}

/// The positions of the highest scores: the highest first, equal ones in their order.
/// @param kept how many.
/// @param positions out; its memory is used again.
/// @param scoreOf takes a position below `size`.
template <typename ScoreOf>
void FindBestScores(std::size_t size, std::size_t kept, const ScoreOf& scoreOf, std::vector<std::size_t>& positions) {
    // As many are quickly put in their places one by one, because few come in front of those that are there.
    constexpr std::size_t few = 16;
    kept = std::min(kept, size);
    positions.clear();
    if (kept > few) {
        for (std::size_t position = 0; position < size; ++position)
            positions.push_back(position);
        const auto comesFirst = [&](std::size_t left, std::size_t right) {
            const double leftScore = scoreOf(left);
            const double rightScore = scoreOf(right);
            return IsHigherScore(leftScore, rightScore) || (!IsHigherScore(rightScore, leftScore) && left < right);
        };
        const auto end = positions.begin() + static_cast<std::ptrdiff_t>(kept);
        std::partial_sort(positions.begin(), end, positions.end(), comesFirst);
        positions.resize(kept);
        return;
    }
    // Of those that are kept so far.
    double lowest = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t position = 0; position < size && kept > 0; ++position) {
        const double score = scoreOf(position);
        if (positions.size() == kept) {
            if (score <= lowest || !IsHigherScore(score, lowest)) continue;
            positions.pop_back();
        }
        std::size_t place = positions.size();
        positions.push_back(position);
        for (; place > 0 && IsHigherScore(score, scoreOf(positions[place - 1])); --place)
            positions[place] = positions[place - 1];
        positions[place] = position;
        lowest = scoreOf(positions.back());
    }
}

}  // namespace nbscore

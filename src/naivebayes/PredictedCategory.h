#pragma once

#include <cstddef>
#include <span>

#include "framework/NumberText.h"

/// @file
/// The tie rule: which target category is predicted.

namespace nbscore {

namespace predicted_category {

inline std::size_t FirstHighest(std::span<const double> probabilities) {
    std::size_t best = 0;
    double top = probabilities[0];
    for (std::size_t i = 1; i < probabilities.size(); ++i) {
        if (probabilities[i] > top) {
            top = probabilities[i];
            best = i;
        }
    }
    return best;
}

/// The first category but 0, from here on, with this probability; the list's size when there is none.
inline std::size_t NextTied(std::span<const double> probabilities, double top, std::size_t from) {
    while (from < probabilities.size() && probabilities[from] != top)
        ++from;
    return from;
}

}  // namespace predicted_category

/// The category with the highest probability. Ties are decided by this rule, deliberately: predictions would
/// differ for tied categories if any of it were "mended".
///
/// Let best be the first category that reaches the highest probability. Of the tied categories *other than
/// category 0*, the first one is never compared; each later one displaces best when its target count is
/// strictly greater than best's count truncated to a whole number. So:
/// - where category 0 is not among the highest, the tied category with the largest count wins, the earlier
///   one when counts are equal;
/// - where category 0 is among the highest, it competes against the third and later tied categories only: the
///   second one never wins, whatever its count.
///
/// A NaN is never greater than, nor equal to, anything: a NaN at category 0 keeps category 0, one elsewhere
/// is never predicted.
///
/// @param probabilities one per target category; an empty list stops the process.
/// @param targetCounts one per target category; looked at only where a tied category is compared.
inline std::size_t PredictedCategory(std::span<const double> probabilities, std::span<const double> targetCounts) {
    std::size_t best = predicted_category::FirstHighest(probabilities);
    const double top = probabilities[best];
    // Category 0 is never a tied one, and the first tied one, which is best itself unless best is 0, is
    // passed over.
    const std::size_t uncompared = best == 0 ? predicted_category::NextTied(probabilities, top, 1) : best;
    std::size_t tied = predicted_category::NextTied(probabilities, top, uncompared + 1);
    if (tied >= probabilities.size()) return best;

    int count = SaturateToInt(targetCounts[best]);
    for (; tied < probabilities.size(); tied = predicted_category::NextTied(probabilities, top, tied + 1)) {
        if (targetCounts[tied] > count) {
            best = tied;
            count = SaturateToInt(targetCounts[best]);
        }
    }
    return best;
}

}  // namespace nbscore

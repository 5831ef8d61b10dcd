#pragma once

#include <cstddef>
#include <vector>

/// @file
/// The tie rule: which target category is predicted.

namespace nbscore {

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
std::size_t PredictedCategory(const std::vector<double>& probabilities, const std::vector<double>& targetCounts);

}  // namespace nbscore

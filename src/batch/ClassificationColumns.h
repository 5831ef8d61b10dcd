#pragma once

#include <cstdint>
#include <span>

#include "batch/MatrixOrder.h"

namespace nbscore {

/// Where the answers for so many cases go, each in memory of the caller's. What is empty is not asked for and not
/// written; everything else must have exactly the size that is told.
struct ClassificationColumns {
    /// The predicted category's position among the target's: one for each case.
    std::span<std::int32_t> predicted;
    /// The probability of the predicted category: one for each case.
    std::span<double> confidence;
    /// The probability of each category: cases times categories. For a case without any usable value these are the
    /// priors as they stand, which need not sum to one.
    std::span<double> probabilities;
    MatrixOrder probabilityOrder = MatrixOrder::CaseByCase;
    /// For each predictor: in how many cases it had no value, or one that stands for none; and in how many a value that
    /// is none of its categories. Added to what is there.
    std::span<std::uint64_t> missing;
    std::span<std::uint64_t> unknown;
};

}  // namespace nbscore

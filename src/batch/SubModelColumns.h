#pragma once

#include <cstdint>
#include <span>

#include "batch/MatrixOrder.h"

namespace nbscore {

/// Where the answers of a set of sub-models go for so many cases, each in memory of the caller's. What is empty is not
/// asked for and not written; everything else must have exactly the size that is told.
struct SubModelColumns {
    /// Each sub-model's score of each case, cases times sub-models: the posterior probability of the target's second
    /// category, or its raw prior where a case says nothing to the sub-model.
    std::span<double> scores;
    MatrixOrder scoreOrder = MatrixOrder::CaseByCase;
    /// For each predictor of each sub-model, those of the first sub-model in front: in how many cases it had no value,
    /// or one that stands for none; and in how many a value that is none of its categories. Added to what is there.
    std::span<std::uint64_t> missing;
    std::span<std::uint64_t> unknown;
};

}  // namespace nbscore

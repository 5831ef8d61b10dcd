#pragma once

#include <cstdint>
#include <span>

namespace nbscore {

/// How a matrix with a row for each case lies in memory.
enum class MatrixOrder {
    /// The cases one behind the other, each with all its columns.
    CaseByCase,
    /// The columns one behind the other, each with all cases.
    ColumnByColumn
};

/// Where the answers for so many cases go, each in memory of the caller's. What is empty is not asked for and not
/// written; everything else must have exactly the size that is told.
struct AnswerColumns {
    /// Of a single classifier the predicted category's position among the target's, and its probability: one for each
    /// case. A set of sub-models predicts nothing and refuses both. A case without a result, by the standard's rule,
    /// has -1 and the system-missing number.
    std::span<std::int32_t> predicted;
    std::span<double> confidence;
    /// Of a single classifier the probability of each category, cases times categories. For a case without any usable
    /// value these are the priors as they stand, which need not sum to one. Of a case without a result they are
    /// system-missing numbers.
    /// Of a set the score that each sub-model gives, cases times sub-models: the posterior probability of the target's
    /// second category, or its raw prior where a case says nothing to the sub-model.
    std::span<double> probabilities;
    MatrixOrder probabilityOrder = MatrixOrder::CaseByCase;
    /// For each predictor, of a set those of the first sub-model in front: in how many cases it had no value, or one
    /// that stands for none; and in how many a value that is none of its categories. Added to what is there. By the
    /// standard's rule values are counted as their treatment leaves them, and not at all where one of them is invalid.
    std::span<std::uint64_t> missing;
    std::span<std::uint64_t> unknown;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <cstdint>

#include "batch/RowNumber.h"

namespace nbscore {

/// The joint probabilities of a block of cases: for each case and target category the prior times the factors of the
/// predictors, from the left, in their order. Every loop does the same multiplications; they differ in what lies side
/// by side in a vector.
struct ProductTask {
    /// Filled up with ones to FactorTable::GetStride(categories), and aligned.
    const double* priors = nullptr;
    std::size_t categories = 0;
    std::size_t predictors = 0;
    /// For each predictor FactorTable::GetRows and GetPlanes.
    const double* const* tablesByRow = nullptr;
    const double* const* tablesByCategory = nullptr;
    std::size_t cases = 0;
    /// Where the joint probabilities go, category by category, so far apart; aligned. Up to the next multiple of
    /// ProductTask::caseMultiple beyond the cases is written too, and read from the rows.
    double* joints = nullptr;
    std::size_t pitch = 0;
    /// Room for caseMultiple rows of a table, aligned.
    double* scratch = nullptr;

    static constexpr std::size_t caseMultiple = 16;
};

/// @param rows for each predictor the row of each case.
void MultiplyFactors(const ProductTask& task, const std::uint8_t* const* rows);
void MultiplyFactors(const ProductTask& task, const RowNumber* const* rows);

}  // namespace nbscore

#pragma once

#include <cstddef>

#include "batch/RowNumber.h"

namespace nbscore {

/// The scores that sub-models with the same inputs give to a block of cases, each sub-model in a lane of its own.
///
/// Priors and factors lie category by category, each category `pitch` numbers long: one for each sub-model, filled up
/// with ones, aligned. A row of a table is all categories.
struct SubModelTask {
    /// A multiple of eight.
    std::size_t pitch = 0;
    /// At least two; the second is the one that is scored.
    std::size_t categories = 0;
    const double* priors = nullptr;
    std::size_t predictors = 0;
    /// One for each predictor.
    const double* const* tables = nullptr;
    std::size_t cases = 0;
    /// For each predictor the row of each case.
    const RowNumber* const* rows = nullptr;
    /// Out, case by case, each `pitch` long; aligned.
    double* scores = nullptr;
};

/// joint(second category) / sum of all joints, whether or not a case says anything to a sub-model: joints are taken
/// from the left in the order of the predictors, the sum from 0 in the order of the categories, and a zero sum is not
/// guarded.
void ScoreSubModels(const SubModelTask& task);

}  // namespace nbscore

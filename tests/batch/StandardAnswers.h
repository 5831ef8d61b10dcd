#pragma once

#include <cstddef>
#include <cstdint>

#include "batch/Answers.h"
#include "batch/BatchScorer.h"
#include "batch/InputTable.h"
#include "framework/ScoreModel.h"
#include "support/documents/RandomDraws.h"

/// @file
/// What is answered for a table's cases by the standard's rule: one by one by the model itself, and all at once.

namespace nbscore::test {

struct OneByOne {
    /// Without the counts of missing values.
    Answers answers;
    /// Of all predictors together.
    std::uint64_t missing = 0;
    std::size_t withoutResult = 0;
};

/// By the model's GetScore. The table has columns for the derived fields, too.
OneByOne ScoreOneByOne(ScoreModel& model, const InputTable& table);

/// By one call. Columns have shapes drawn at random, the matrix either order.
Answers ScoreColumns(const BatchScorer& scorer, const InputTable& table, Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "batch/BatchEngine.h"
#include "batch/InputTable.h"
#include "batch/PreparedRow.h"
#include "framework/ModelTables.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "support/documents/RandomDraws.h"

/// @file
/// What is answered for a table's cases: one by one by the model itself, in batches, and by a row.

namespace nbscore::test {

struct Answers {
    /// Of a single classifier.
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    /// Probabilities or scores, case by case.
    std::vector<double> matrix;
    std::vector<std::uint64_t> missing;
    std::vector<std::uint64_t> unknown;
};

/// Appends what a result says of its case.
void ReadAnswer(const ScoreResult& result, Answers& answers);
/// Appends for each of the model's predictors how many missing and unknown values the table holds, by plain counting.
void CountValues(const ScoreModel& model, const InputTable& table, Answers& answers);

/// By the model's GetScore, and plain counting. The table has a column for every field that the model reads, derived
/// ones among them.
Answers AnswersOneByOne(ScoreModel& model, const InputTable& table);

/// Scores the cases in calls that take so many of them each, one after the other, the last call the rest. Columns have
/// shapes drawn at random, the matrix either order, and now and then the rows of all values are told beforehand.
Answers AnswersInBatches(const BatchEngine& engine, const InputTable& table, const std::vector<std::size_t>& sizes,
                         Randomness& random);

/// Scores the cases by one row, one after the other. Of some cases every input is set, of others those alone that
/// differ from the case before. Nothing is counted.
Answers AnswersByRow(const std::vector<BatchInput>& inputs, PreparedRow& row, const InputTable& table,
                     Randomness& random);

/// Where the bits of two answers first differ, for a message; empty where they are the same. All NaNs count as one:
/// which of them arithmetic gives is the processor's affair.
std::string FirstDifference(const Answers& expected, const Answers& actual);

}  // namespace nbscore::test

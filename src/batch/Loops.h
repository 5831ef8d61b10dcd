#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "batch/FactorRow.h"

/// @file
/// The loops that are compiled once for each set of instructions and chosen by the processor at hand. They differ in
/// what lies side by side in a vector, cases, target categories or sub-models, and never in the order of a sum or
/// product.

namespace nbscore {

/// The longest list of rows that MapCodes takes: as many bytes as a vector's instructions look up in at once.
inline constexpr std::size_t longestListOfRows = 16;

/// Replaces codes by rows, many at a time.
/// @param rowsOfCodes the row of each code, that of -1 in front; at most longestListOfRows, each below 256.
/// @param rows room for as many as there are codes.
/// False when a code is below -1 or has no row; what stands in `rows` is then of no use.
bool MapCodes(std::span<const std::int8_t> codes, std::span<const FactorRow> rowsOfCodes, std::uint8_t* rows);

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
void MultiplyFactors(const ProductTask& task, const FactorRow* const* rows);

/// A block of cases on its way from joint to posterior probabilities and to a prediction.
struct PosteriorTask {
    /// In place, category by category, so far apart; aligned.
    double* probabilities = nullptr;
    std::size_t pitch = 0;
    std::size_t categories = 0;
    /// Up to the next multiple of ProductTask::caseMultiple beyond the cases is read and written too.
    std::size_t cases = 0;
    /// For each case firstKnownRow or more when any predictor has a category in it. A case without keeps the priors as
    /// they stand, which need not sum to one.
    const std::uint8_t* usable = nullptr;
    std::span<const double> targetCounts;
    /// Out, for each case: PredictedCategory and its probability.
    std::int32_t* predicted = nullptr;
    double* confidence = nullptr;
};

/// Divides by the sum of all categories, taken in their order from 0, and predicts. A zero sum is not guarded: the
/// quotients are what division by zero gives.
void NormalizeAndPredict(const PosteriorTask& task);

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
    const FactorRow* const* rows = nullptr;
    /// Out, case by case, each `pitch` long; aligned.
    double* scores = nullptr;
};

/// joint(second category) / sum of all joints, whether or not a case says anything to a sub-model: joints are taken
/// from the left in the order of the predictors, the sum from 0 in the order of the categories, and a zero sum is not
/// guarded.
void ScoreSubModels(const SubModelTask& task);

}  // namespace nbscore

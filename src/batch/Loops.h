#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "factors/FactorRow.h"

/// @file
/// The loops that are compiled once for each set of instructions and chosen by the processor at hand. They differ in
/// what lies side by side in a vector, cases, target categories or sub-models, and never in the order of a sum or
/// product.

namespace nbscore {

/// Blocks of cases are filled up to a multiple of this: loops read and write that far.
inline constexpr std::size_t caseMultiple = 16;

constexpr std::size_t RoundUpCases(std::size_t cases) {
    return (cases + caseMultiple - 1) / caseMultiple * caseMultiple;
}

/// The longest list that MapBytes takes: as many entries as a byte tells apart.
inline constexpr std::size_t longestByteList = 256;

/// Turns codes into places in a list whose first entry is that of code -1: each is one more than its code.
/// @param size of the list, at most longestByteList.
/// @param places room for as many as there are codes.
/// False when a code is below -1 or has no place; what stands in `places` is then of no use.
bool NarrowCodes(std::span<const std::int8_t> codes, std::size_t size, std::uint8_t* places);
bool NarrowCodes(std::span<const std::int16_t> codes, std::size_t size, std::uint8_t* places);
bool NarrowCodes(std::span<const std::int32_t> codes, std::size_t size, std::uint8_t* places);

/// A list that is looked up in by places, filled up with zeros.
class ByteList {
public:
    ByteList() = default;
    /// @param list at most longestByteList numbers, each of which fits into a byte.
    explicit ByteList(std::span<const FactorRow> list);

    std::size_t GetSize() const { return size; }
    const std::uint8_t* GetBytes() const { return bytes; }

private:
    alignas(16) std::uint8_t bytes[longestByteList] = {};
    std::size_t size = 0;
};

/// Replaces places by what stands there in a list.
/// @param places each in the list. @param out may be where the places are. Up to the next number that caseMultiple
/// divides is read and written; bytes there need not be places.
void MapBytes(const ByteList& list, const std::uint8_t* places, std::size_t count, std::uint8_t* out);

/// out[i] |= bytes[i]. Nothing overlaps.
void OrIntoBytes(const std::uint8_t* bytes, std::size_t count, std::uint8_t* out);

/// out[i] += factor * bytes[i], all below 256. Nothing overlaps.
void AddMultiplesToBytes(const std::uint8_t* bytes, std::uint8_t factor, std::size_t count, std::uint8_t* out);

/// What one predictor, or the left end of a product, multiplies into the joint probabilities.
struct FactorStep {
    /// Laid out as the loop asks for that the step is made for.
    const double* table = nullptr;
    /// How many rows the table has, the first of them ones. Above longestByteList the list of rows is a wide one.
    std::size_t numRows = 0;
    /// The list of the cases' rows: a number among the narrow lists, or among the wide ones.
    std::size_t list = 0;
};

/// The joint probabilities of a block of cases: for each case and target category the prior times the factors of the
/// predictors, from the left, in their order. Every loop does the same multiplications; they differ in what lies side
/// by side in a vector.
struct ProductTask {
    /// The table of the first holds the left end of each product; what the others have is multiplied into it.
    std::span<const FactorStep> steps;
    std::size_t categories = 0;
    /// Lists of rows, one behind the other, each so long. Rows beyond the cases are read, too.
    const std::uint8_t* narrowRows = nullptr;
    const FactorRow* wideRows = nullptr;
    std::size_t rowPitch = 0;
    /// Which of the lists' entries are multiplied: a number of them that caseMultiple divides.
    std::size_t first = 0;
    std::size_t cases = 0;
    /// Where the joint probabilities go, aligned.
    double* joints = nullptr;
    /// From category to category, or from case to case.
    std::size_t pitch = 0;
};

using ProductLoop = void (*)(const ProductTask& task);

/// The loop with cases side by side, which looks tables of few rows up within registers; joints go category by
/// category. Null when the processor has no such registers.
///
/// Tables of up to so many rows as one of rowsInRegisters lie category by category, each so long. Those with more rows
/// lie in parts of RowPart(categories) categories: row by row, filled up with ones.
ProductLoop FindRegisterLoop();
inline constexpr std::size_t rowsInRegisters[] = {8, 16, 32};
constexpr std::size_t RowPart(std::size_t categories) {
    return categories <= 2 ? 2 : 4;
}

/// The loop with target categories side by side. Tables and joints lie row by row and case by case, each row
/// RowStride(categories) long and filled up with ones.
void MultiplyRows(const ProductTask& task);
constexpr std::size_t RowStride(std::size_t categories) {
    if (categories <= 4) return RowPart(categories);
    return (categories + 7) / 8 * 8;
}

/// to[c * toPitch + r] = from[r * fromPitch + c].
void Transpose(const double* from, std::size_t fromPitch, std::size_t rows, std::size_t columns, double* to,
               std::size_t toPitch);

/// A block of cases on its way from joint to posterior probabilities and to a prediction.
struct PosteriorTask {
    /// In place, category by category, so far apart; aligned.
    double* probabilities = nullptr;
    std::size_t pitch = 0;
    std::size_t categories = 0;
    /// A number that caseMultiple divides.
    std::size_t cases = 0;
    /// For each case 0 when no predictor has a category in it. Such a case keeps the priors as they stand, which need
    /// not sum to one.
    const std::uint8_t* usable = nullptr;
    std::span<const double> targetCounts;
    /// Out, for each case: PredictedCategory and its probability.
    std::int32_t* predicted = nullptr;
    double* confidence = nullptr;
    /// Where probabilities of few categories go instead, case by case; null for in place.
    double* byCase = nullptr;

    static constexpr bool StoresByCase(std::size_t categories) { return categories >= 2 && categories <= 4; }
};

/// Divides by the sum of all categories, taken in their order from 0, and predicts. A zero sum is not guarded: the
/// quotients are what division by zero gives.
void NormalizeAndPredict(const PosteriorTask& task);

/// The scores that a sub-model gives to a block of cases.
struct ScoreTask {
    /// Category by category, so far apart; aligned. At least two; the second is the one that is scored.
    const double* joints = nullptr;
    std::size_t pitch = 0;
    std::size_t categories = 0;
    /// A number that caseMultiple divides.
    std::size_t cases = 0;
    /// As in PosteriorTask; such a case has the prior as its score.
    const std::uint8_t* usable = nullptr;
    double prior = 0.0;
    /// Aligned.
    double* scores = nullptr;
};

/// joint(second category) / sum of all joints, the sum from 0 in the order of the categories, a zero sum not guarded.
void ScoreSecondCategory(const ScoreTask& task);

/// The scores that sub-models with the same inputs give to a block of cases, each sub-model in a lane of its own.
///
/// A row of a table is all categories, each `lanes` numbers long: one for each sub-model, filled up with ones, aligned.
struct SubModelTask {
    /// A multiple of eight.
    std::size_t lanes = 0;
    /// Which of them are scored: a number that eight divides, from one that it divides on.
    std::size_t firstLane = 0;
    std::size_t lanesToScore = 0;
    /// As for ProductTask. At least two categories; the second is the one that is scored.
    ProductTask product;
    /// Out, case by case, so far apart.
    double* scores = nullptr;
    std::size_t pitch = 0;
};

/// As ScoreSecondCategory, whether or not a case says anything to a sub-model.
void ScoreSubModels(const SubModelTask& task);

}  // namespace nbscore

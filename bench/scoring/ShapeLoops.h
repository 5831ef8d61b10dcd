#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "framework/ModelTables.h"

/// @file
/// What a program could do that was written for the kind of shape at hand: plain loops over columns of codes, with the
/// number of target categories fixed where there are up to five and else the number of vectors, compiled for the
/// processor at hand alone. They do the same multiplications, additions and divisions in the same order as scoring
/// does, so their answers are the same bits.

namespace nbscore::bench {

/// Tables of a classifier, each with ones for the code -1 in front, row by row, and rows filled up with ones.
struct ShapeTables {
    std::vector<double> priors;
    std::vector<AlignedNumbers> factors;
    std::vector<std::size_t> inputs;

    /// @param inputs that each predictor reads.
    ShapeTables(const ClassifierTables& classifier, std::vector<std::size_t> inputsOfPredictors,
                std::size_t targetCategories);

    /// Vectors of eight, or as many as there are where a few fit one.
    static constexpr std::size_t StrideOf(std::size_t categories) {
        return categories <= 2 ? 2 : categories <= 4 ? 4 : (categories + 7) / 8 * 8;
    }
};

struct ShapeAnswers {
    std::int32_t* predicted = nullptr;
    double* confidence = nullptr;
    /// Case by case: probabilities, or of a set the scores.
    double* numbers = nullptr;
};

/// @tparam Code std::int8_t, std::int16_t or std::int32_t. @param codes of each input.
template <typename Code>
void ScoreShape(const ShapeTables& tables, std::size_t categories, const std::vector<std::vector<Code>>& codes,
                std::size_t cases, const ShapeAnswers& answers);
/// Sub-models of two target categories.
template <typename Code>
void ScoreShapeOfSet(const std::vector<ShapeTables>& subModels, const std::vector<std::vector<Code>>& codes,
                     std::size_t cases, const ShapeAnswers& answers);

}  // namespace nbscore::bench

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "batch/AlignedNumbers.h"

/// @file
/// What a program could do that knows one shape of model and nothing else: plain loops with every size fixed, over
/// columns of one-byte codes without a missing value, in a number of cases that eight divides, compiled for the
/// processor at hand alone. They do the same multiplications, additions and divisions in the same order as scoring
/// does, so their answers are the same bits; how long they take is the measure for the rate of scoring.

namespace nbscore::bench {

using CodeColumns = std::vector<std::vector<std::int8_t>>;

/// Of a single classifier.
struct TightTables {
    /// One for each target category, filled up with ones to their stride.
    AlignedNumbers priors;
    /// For each predictor the factors of each code, likewise.
    std::vector<AlignedNumbers> factors;

    /// Two categories lie side by side; more are filled up to whole vectors of eight.
    static constexpr std::size_t StrideOf(std::size_t categories) {
        return categories == 2 ? 2 : (categories + 7) / 8 * 8;
    }
};

/// Of sub-models that read the same inputs: the numbers of the first target category for all of them, then those of the
/// second.
struct TightSetTables {
    AlignedNumbers priors;
    /// For each predictor and code so many numbers.
    std::vector<AlignedNumbers> factors;
};

/// Where the answers go, as in AnswerColumns; probabilities case by case.
struct TightAnswers {
    std::int32_t* predicted = nullptr;
    double* confidence = nullptr;
    double* probabilities = nullptr;
};

/// 10 predictors, 2 target categories.
void ScoreTenPredictors(const TightTables& tables, const CodeColumns& codes, std::size_t cases,
                        const TightAnswers& answers);
/// 50 predictors, 20 target categories.
void ScoreFiftyPredictors(const TightTables& tables, const CodeColumns& codes, std::size_t cases,
                          const TightAnswers& answers);
/// 200 sub-models of 8 predictors.
/// @param scores case by case, one for each sub-model.
void ScoreTwoHundredSubModels(const TightSetTables& tables, const CodeColumns& codes, std::size_t cases,
                              double* scores);

}  // namespace nbscore::bench

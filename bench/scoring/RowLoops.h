#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "framework/ModelTables.h"

/// @file
/// What a program could do for one case that was written for the shape at hand: the codes of all fields are known, no
/// value is missing, every size is fixed. The multiplications, additions and divisions are those of scoring, in its
/// order, so the answers are the same bits.

namespace nbscore::bench {

/// The numbers of classifiers of two target categories, row by row.
struct RowTables {
    struct Predictor {
        std::size_t field;
        std::size_t table;
    };
    std::vector<double> priors;
    std::vector<double> factors;
    /// Those of all classifiers, one behind the other.
    std::vector<Predictor> predictors;

    /// @param fieldsOfClassifiers that each reads, in the order of its predictors.
    RowTables(const ModelTables& model, const std::vector<std::vector<std::size_t>>& fieldsOfClassifiers);
};

/// A classifier of 10 predictors. @param posteriors out: two. @return the predicted category.
std::size_t ScoreTenPredictors(const RowTables& tables, const std::uint32_t* codes, double* posteriors);
/// 200 sub-models of 8 predictors. @param scores out: one for each.
void ScoreTwoHundredSubModels(const RowTables& tables, const std::uint32_t* codes, double* scores);

}  // namespace nbscore::bench

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "factors/FactorRow.h"
#include "framework/Export.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// Whether a sub-model has a prior of zero, for the target's first or second category. Such a one answers every case
/// with its prior.
SCOREFRAMEWORK_API bool HasZeroPrior(const ClassifierTables& subModel);

/// The priors and factors of a model's classifiers in one piece, for scoring cases one by one by the smoothed rule.
/// Each product is taken from the left, in the order of the predictors, and each sum from 0 in the order of the target
/// categories: the answers are those of the model, to the last bit.
///
/// A case is a list of places, each of which one or more predictors go by: 0 where the case says nothing to them, and
/// otherwise their category's code and one. Immutable; any number of threads may ask.
class SCOREFRAMEWORK_API CaseFactors {
public:
    /// @param model its numbers are copied. Where there are fewer than target categories, ones stand for the others.
    /// @param targetCategories how many of them, at least one; of a set two.
    /// @param listed for each predictor of the first classifier, of the next, and so on: where in a case's list its
    /// place stands.
    CaseFactors(const ModelTables& model, std::size_t targetCategories, std::span<const std::size_t> listed);

    /// Of the first classifier: the posterior probability of each target category, or the priors as they stand where
    /// the case says nothing to any predictor. A zero sum is not guarded: the quotients are what division by zero
    /// gives.
    void ComputePosteriors(std::span<const FactorRow> places, std::span<double> posteriors) const;
    /// Of each sub-model the posterior probability of the target's second category, or its prior.
    void ComputeScores(std::span<const FactorRow> places, std::span<double> scores) const;

private:
    /// One predictor's part in its classifier's product.
    struct Step {
        /// Where its row of place 0 begins.
        std::size_t table;
        std::size_t listed;
    };

    void AddStep(const PredictorTables& predictor, std::size_t listed);

    template <typename Joints>
    bool Multiply(std::size_t classifier, std::span<const FactorRow> places, Joints& joints) const;
    template <typename Joints>
    void ScoreWith(Joints room, std::span<const FactorRow> places, std::span<double> scores) const;

    std::size_t numCategories;
    std::vector<Step> steps;
    /// For each classifier the number of its steps and of all before it.
    std::vector<std::size_t> ends;
    /// Those of each classifier, one for each target category.
    std::vector<double> priors;
    /// For each step and place a row of numbers, one for each target category. The row of place 0 is all ones: to
    /// multiply by them leaves the predictor out and changes no bit.
    std::vector<double> factors;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "evidence/Evidence.h"
#include "framework/ModelTables.h"
#include "framework/ScoringRule.h"
#include "naivebayes/ScaledNumber.h"

namespace nbscore {

/// ln(one / other). None where one of them is not above 0, or is not finite.
///
/// Off by half a unit in the last place of the quotient and by what `log` of the C library is off.
std::optional<double> LogRatio(const ScaledNumber& one, const ScaledNumber& other);

/// What a predictor says about a category against another one, for all that a case may hold.
struct PredictorWeights {
    /// The weight of each of the predictor's categories, by code; none of densities.
    std::vector<std::optional<double>> ofCodes;
    /// As in PredictorEvidence; of densities, the range is that of the centres alone.
    std::optional<double> average;
    WeightRange range;
};

/// The weights of a classifier for one category against another one. Takes time and memory in proportion to the
/// classifier's tables. Immutable.
class PairWeights {
public:
    /// @param classifier borrowed for the call.
    /// @param category and @param against positions among its target categories.
    PairWeights(const ClassifierTables& classifier, DensityFloor floor, std::size_t category, std::size_t against);

    const std::optional<double>& GetBase() const { return base; }
    const std::optional<double>& GetAverageBase() const { return averageBase; }
    const std::vector<PredictorWeights>& GetPredictors() const { return predictors; }
    /// How many weights there are.
    std::size_t CountNumbers() const;

private:
    std::optional<double> base;
    std::optional<double> averageBase;
    std::vector<PredictorWeights> predictors;
};

}  // namespace nbscore

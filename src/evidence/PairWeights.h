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

/// The weight of a predictor's category, by its code; none of densities.
std::optional<double> WeightOf(const PredictorTables& predictor, std::size_t code, std::size_t category,
                               std::size_t against);

/// How often each of a predictor's categories was counted, as a share of all. None of densities, of a predictor that
/// nothing was counted of, and where the counts are no shares of a whole.
using CountedShares = std::optional<std::vector<double>>;

/// For each predictor. Takes time in proportion to the classifier's tables; the same for every pair of categories.
std::vector<CountedShares> FindShares(const ClassifierTables& classifier);

/// What a predictor says about a category against another one, for all that a case may hold.
struct PredictorWeights {
    /// WeightOf each of the predictor's categories; empty where it has none.
    std::vector<std::optional<double>> ofCodes;
    /// As in PredictorEvidence.
    std::optional<double> average;
    /// As in PredictorEvidence, of densities at their centres alone.
    WeightRange range;
};

/// The weights of a classifier for one category against another one. Takes time and memory in proportion to the number
/// of its predictors' categories. Immutable.
class PairWeights {
public:
    /// @param classifier borrowed for the call. @param shares its own (FindShares).
    /// @param category and @param against positions among its target categories.
    PairWeights(const ClassifierTables& classifier, const std::vector<CountedShares>& shares, DensityFloor floor,
                std::size_t category, std::size_t against);

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

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "framework/CaseReading.h"
#include "naivebayes/ScaledNumber.h"

/// @file
/// Why a case is scored as it is. A Naive Bayes classifier multiplies, for each target category k, a prior and one
/// factor p_i(k) for each predictor i that has a value. So the odds of one category a against another one b are a
/// product, too, and their logarithm is a sum with a term for each predictor:
///
///     ln(P(a) / P(b)) = ln(prior(a) / prior(b)) + sum over i of ln(p_i(a) / p_i(b))
///                     =          base           + sum over i of       w_i
///
/// docs/explain.md tells users. All logarithms are natural ones; InDecibans turns them into decibans.
///
/// A number that there is none of is an empty optional, never an infinity or a NaN.

namespace nbscore {

/// How many decibans a weight is.
inline double InDecibans(double weight) {
    return weight * 4.342944819032518;  // 10 / ln(10)
}

/// The lowest and the highest of some weights; none of no weights.
struct WeightRange {
    std::optional<double> lowest = std::nullopt;
    std::optional<double> highest = std::nullopt;

    /// Takes another weight in, unless it is none.
    void Widen(const std::optional<double>& weight);
};

/// What one predictor says about a category a against another one b.
struct PredictorEvidence {
    /// Whether the predictor takes part. A predictor with another kind than Known is left out: its weight is 0.
    PredictorReading::Kind kind = PredictorReading::Missing;
    /// The value as text; empty where there is none.
    std::string value;
    /// One for each target category, in their order; empty where the predictor is left out. Counted factors have the
    /// exponent 0.
    std::vector<ScaledNumber> factors;
    /// w = ln(factor of a / factor of b). None where one of these is not above 0.
    std::optional<double> weight = 0.0;
    /// The mean of the weights of the predictor's categories, each as often as the document counted it. 0 where nothing
    /// was counted; none of densities, where a category that was counted has no weight, and where the counts are no
    /// shares of a whole.
    std::optional<double> average;
    /// weight - average.
    std::optional<double> againstAverage;
    /// What the predictor could have said: the weights of its categories, as far as they have one. Of densities the
    /// weights of the centres of the target categories' densities, and of the value itself.
    WeightRange range;
};

/// Why a case is scored as it is, for one classifier and two of the target's categories.
struct Evidence {
    enum State {
        Explained,
        /// No predictor has a value that it knows: the probabilities are the priors as they stand.
        NothingKnown,
        /// By the standard's rule: a value ends the case. There are neither probabilities nor weights.
        InvalidValue,
        /// The product is 0 for every category, or not finite. There are neither probabilities nor weights.
        NothingPossible,
        /// Of a sub-model: a prior is 0. Then its score is the prior, whatever the case holds, and there is no base.
        VanishedPrior,
        /// The target has fewer than two categories. There are no weights.
        NoOtherCategory
    };

    State state = Explained;
    /// Of an invalid value, the field's name.
    std::string invalidField;
    /// Positions of a and b among the target's categories. Both 0 where there are no weights.
    std::size_t category = 0;
    std::size_t against = 0;
    /// One for each target category.
    std::vector<double> priors;
    /// What scoring gives, to the last bit. Empty where there is nothing.
    std::vector<double> probabilities;
    /// ln(prior of a / prior of b). None where one of these is not above 0.
    std::optional<double> base;
    /// In the order in which their factors are multiplied.
    std::vector<PredictorEvidence> predictors;
    /// base plus the weights, from the left. None where one of them is none.
    ///
    /// Where the probabilities of a and b are normal numbers, and no product on the way was none, this is
    /// ln(P(a) / P(b)) up to (2 n + 4) * 2^-52 * max(1, |base| + sum of |w_i|) with n the number of predictors that
    /// take part.
    std::optional<double> logOdds;
    /// base plus the averages that there are, from the left: the log-odds of the document's own population. Added to
    /// againstAverage of all predictors with an average, and to the weights of those without, it gives the log-odds.
    std::optional<double> averageBase;
};

/// Which categories to weigh against each other.
struct AskedPair {
    /// Positions among the target's categories. Where only one is given, the other one is the most probable of the
    /// rest. Where none is given, of two categories the second one is weighed against the first one, of more the
    /// predicted one against the most probable of the rest. Of equally probable ones the first is taken.
    std::optional<std::size_t> category = std::nullopt;
    std::optional<std::size_t> against = std::nullopt;
};

enum class ReasonKind {
    /// What held the category down.
    HeldDown,
    /// What lifted it.
    Lifted
};

/// The predictors that held the category of the evidence down most, or lifted it most: those whose weight is farthest
/// below the highest, or above the lowest, that they could have said. Of equally far ones the first comes first. A
/// predictor whose weight is the best itself, or that has none, is no reason.
/// @return positions of predictors, at most so many.
std::vector<std::size_t> FindReasons(const Evidence& evidence, ReasonKind kind, std::size_t most);

}  // namespace nbscore

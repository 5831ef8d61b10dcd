#pragma once

#include <memory>
#include <vector>

#include "naivebayes/NBayesInputBase.h"

/// @file
/// The arithmetic that a single classifier and a set of classifiers share. Every sum and product is taken in
/// the order stated here, in plain doubles: answers are reproducible to the last bit.

namespace nbscore {

/// The smoothed prior of each target category: (t + n_k) / (K * t + 1 / t), with t the threshold, n_k the
/// counts and K their number. The denominator is K * t + 1 / t and not the total count, on purpose: the
/// priors are only compared and normalised, where a common factor cancels. With t = 0 every prior is 0.
std::vector<double> SmoothedPriors(const std::vector<double>& targetCounts, double threshold);

/// prior * P_1(x_1 | k) * P_2(x_2 | k) * …, from the left, over the predictors that have a code.
///
/// @param codes one entry per table: the category's code, or the system-missing number for none. An entry
///     that is not greater than -0.5 is no code either; any other is rounded to the nearest whole number.
/// @param targetIndex the target category k. A code or target index outside a table stops the process.
double JointProbability(double prior, const std::vector<std::unique_ptr<NBayesInputBase>>& tables,
                        const std::vector<double>& codes, int targetIndex);

}  // namespace nbscore

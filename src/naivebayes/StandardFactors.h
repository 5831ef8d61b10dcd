#pragma once

#include <vector>

/// @file
/// The rule of the PMML standard, by which factors follow from counts: shares of counts, and the threshold in the place
/// of shares that are 0. Every sum is taken from 0 in the order stated.

namespace nbscore {

/// The share of each target category in all counts, summed in the order of the categories. 0 where it is none: nothing
/// was counted, or counts are no numbers.
std::vector<double> StandardPriors(const std::vector<double>& targetCounts);

/// The share of each predictor category m among the counts of each target category j:
///     P(m | j) = count[m][j] / T_j
/// with T_j the total of column j, summed in the order of the rows. Where that is 0, or none, the threshold.
/// @param counts rows of the same length.
/// @param probabilities out; has the size of the counts already.
void StandardConditionals(const std::vector<std::vector<double>>& counts, double threshold,
                          std::vector<std::vector<double>>& probabilities);

}  // namespace nbscore

#pragma once

#include <vector>

/// @file
/// The rule by which factors follow from counts: each count is smoothed by the threshold t, a pseudo-count. Every sum
/// and quotient is taken in the order stated, in plain doubles: answers are reproducible to the last bit.

namespace nbscore {

/// How many rows have a total above zero.
int CountNonEmptyRows(const std::vector<std::vector<double>>& counts);

/// The prior of each target category: (t + n_k) / (K * t + 1 / t), with n_k the counts and K their number. The
/// denominator is K * t + 1 / t and not the total count, on purpose: the priors are only compared and normalised,
/// where a common factor cancels. With t = 0 every prior is 0.
std::vector<double> SmoothPriors(const std::vector<double>& targetCounts, double threshold);

/// The conditional probability of each predictor category m given each target category j:
///     P(m | j) = (t + count[m][j]) / (K * t + T_j)
/// with T_j the total of column j and K the number of non-empty rows (those whose total is above zero). Only non-empty
/// categories enter the denominator, but empty ones get a probability too. With no non-empty row at all every
/// probability is t itself.
/// @param counts rows of the same length.
/// @param probabilities out; has the size of the counts already.
/// @return the number of non-empty rows.
int SmoothConditionals(const std::vector<std::vector<double>>& counts, double threshold,
                       std::vector<std::vector<double>>& probabilities);

}  // namespace nbscore

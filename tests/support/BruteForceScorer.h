#pragma once

#include <vector>

/// @file
/// A second scorer to compare with: the formulas of the classifier written down one after the other over plain
/// vectors. It shares no code with what it checks and is not made to be fast.

namespace nbscore::test {

struct BruteForceModel {
    double threshold = 0.0;
    /// One per target category.
    std::vector<double> targetCounts;
    /// [predictor][category][target category]; rows may be of different lengths, missing counts are zero.
    std::vector<std::vector<std::vector<double>>> counts;
};

struct BruteForceScore {
    int prediction = 0;
    double confidence = 0.0;
    /// One per target category.
    std::vector<double> probabilities;
};

/// @param codes one category per predictor, -1 for none.
BruteForceScore ScoreByBruteForce(const BruteForceModel& model, const std::vector<int>& codes);

/// The category that the tie rule predicts.
int PredictByTieRule(const std::vector<double>& probabilities, const std::vector<double>& targetCounts);

}  // namespace nbscore::test

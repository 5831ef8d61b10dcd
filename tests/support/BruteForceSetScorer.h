#pragma once

#include <array>
#include <vector>

/// @file
/// A second scorer of sets of classifiers to compare with: their formulas written down one after the other over plain
/// numbers. It shares no code with what it checks, nor with the second scorer of single classifiers, so that a slip in
/// one of them is found.

namespace nbscore::test {

/// A number for each of the target's two categories.
using BruteForcePair = std::array<double, 2>;

struct BruteForceSubModel {
    double threshold = 0.0;
    BruteForcePair targetCounts = {0.0, 0.0};
    /// [predictor][category].
    std::vector<std::vector<BruteForcePair>> counts;
};

/// The score of one sub-model: the posterior probability of the target's second category.
/// @param codes one category per predictor, -1 for none.
double ScoreSubModelByBruteForce(const BruteForceSubModel& subModel, const std::vector<int>& codes);

/// The scores of a set: each sub-model scores its own codes, independently of the others.
std::vector<double> ScoreSetByBruteForce(const std::vector<BruteForceSubModel>& subModels,
                                         const std::vector<std::vector<int>>& codes);

}  // namespace nbscore::test

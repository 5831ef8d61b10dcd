#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace nbscore {

/// A block of cases on its way from joint to posterior probabilities and to a prediction.
struct PosteriorTask {
    /// In place, category by category, so far apart; aligned.
    double* probabilities = nullptr;
    std::size_t pitch = 0;
    std::size_t categories = 0;
    /// Up to the next multiple of ProductTask::caseMultiple beyond the cases is read and written too.
    std::size_t cases = 0;
    /// For each case firstKnownRow or more when any predictor has a category in it. A case without keeps the priors as
    /// they stand, which need not sum to one.
    const std::uint8_t* usable = nullptr;
    std::span<const double> targetCounts;
    /// Out, for each case: PredictedCategory and its probability.
    std::int32_t* predicted = nullptr;
    double* confidence = nullptr;
};

/// Divides by the sum of all categories, taken in their order from 0, and predicts. A zero sum is not guarded: the
/// quotients are what division by zero gives.
void NormalizeAndPredict(const PosteriorTask& task);

}  // namespace nbscore

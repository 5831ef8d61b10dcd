#include "naivebayes/Probabilities.h"

#include <cstddef>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

bool IsCode(double code) {
    return !MCMV::IsMissing(code) && code > -0.5;
}

}  // namespace

std::vector<double> SmoothedPriors(const std::vector<double>& targetCounts, double threshold) {
    const auto categories = static_cast<double>(targetCounts.size());
    const double denominator = categories * threshold + 1 / threshold;
    std::vector<double> priors;
    priors.reserve(targetCounts.size());
    for (const double count : targetCounts)
        priors.push_back((threshold + count) / denominator);
    return priors;
}

double JointProbability(double prior, const std::vector<std::unique_ptr<NBayesInputBase>>& tables,
                        const std::vector<double>& codes, int targetIndex) {
    const auto target = static_cast<std::size_t>(targetIndex);
    double joint = prior;
    for (std::size_t j = 0; j < tables.size(); ++j) {
        if (!IsCode(codes[j])) continue;
        const auto category = static_cast<std::size_t>(SaturateToInt(codes[j] + 0.5));
        joint = joint * tables[j]->GetProbabilities()[category][target];
    }
    return joint;
}

}  // namespace nbscore

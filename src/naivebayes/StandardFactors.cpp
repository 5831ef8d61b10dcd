#include "naivebayes/StandardFactors.h"

#include <cstddef>

namespace nbscore {
namespace {

/// A part of nothing, of what is negative or of a NaN is no share.
double ShareOr(double part, double total, double otherwise) {
    const double share = part / total;
    return part > 0.0 && share > 0.0 ? share : otherwise;
}

}  // namespace

std::vector<double> StandardPriors(const std::vector<double>& targetCounts) {
    double total = 0.0;
    for (const double count : targetCounts)
        total += count;
    std::vector<double> priors;
    priors.reserve(targetCounts.size());
    for (const double count : targetCounts)
        priors.push_back(ShareOr(count, total, 0.0));
    return priors;
}

void StandardConditionals(const std::vector<std::vector<double>>& counts, double threshold,
                          std::vector<std::vector<double>>& probabilities) {
    const std::size_t columns = counts.empty() ? 0 : counts[0].size();
    for (std::size_t j = 0; j < columns; ++j) {
        double total = 0.0;
        for (const std::vector<double>& row : counts)
            total += row[j];
        for (std::size_t m = 0; m < counts.size(); ++m)
            probabilities[m][j] = ShareOr(counts[m][j], total, threshold);
    }
}

}  // namespace nbscore

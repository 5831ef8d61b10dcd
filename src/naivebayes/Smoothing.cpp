#include "naivebayes/Smoothing.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace nbscore {
namespace {

using Matrix = std::vector<std::vector<double>>;

std::vector<double> ColumnTotals(const Matrix& counts, std::size_t columns) {
    std::vector<double> totals(columns, 0.0);
    for (const std::vector<double>& row : counts) {
        for (std::size_t j = 0; j < columns; ++j)
            totals[j] += row[j];
    }
    return totals;
}

}  // namespace

int CountNonEmptyRows(const Matrix& counts) {
    const auto isNonEmpty = [](const std::vector<double>& row) {
        return std::accumulate(row.begin(), row.end(), 0.0) > 0.0;
    };
    return static_cast<int>(std::count_if(counts.begin(), counts.end(), isNonEmpty));
}

std::vector<double> SmoothPriors(const std::vector<double>& targetCounts, double threshold) {
    const auto categories = static_cast<double>(targetCounts.size());
    const double denominator = categories * threshold + 1 / threshold;
    std::vector<double> priors;
    priors.reserve(targetCounts.size());
    for (const double count : targetCounts)
        priors.push_back((threshold + count) / denominator);
    return priors;
}

int SmoothConditionals(const Matrix& counts, double threshold, Matrix& probabilities) {
    const std::vector<double> totals = ColumnTotals(counts, counts.empty() ? 0 : counts[0].size());
    const int numNonEmpty = CountNonEmptyRows(counts);
    for (std::size_t m = 0; m < counts.size(); ++m) {
        for (std::size_t j = 0; j < totals.size(); ++j) {
            probabilities[m][j] =
                numNonEmpty < 1 ? threshold : (threshold + counts[m][j]) / (numNonEmpty * threshold + totals[j]);
        }
    }
    return numNonEmpty;
}

}  // namespace nbscore

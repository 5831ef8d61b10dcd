#include "naivebayes/NBayesInputBase.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <ostream>

#include "naivebayes/PrintVector.h"

namespace {

std::vector<double> ColumnTotals(const NBayesInputBase::Matrix& counts, std::size_t columns) {
    std::vector<double> totals(columns, 0.0);
    for (const std::vector<double>& row : counts) {
        for (std::size_t j = 0; j < columns; ++j)
            totals[j] += row[j];
    }
    return totals;
}

int CountNonEmptyRows(const NBayesInputBase::Matrix& counts) {
    const auto isNonEmpty = [](const std::vector<double>& row) {
        return std::accumulate(row.begin(), row.end(), 0.0) > 0.0;
    };
    return static_cast<int>(std::count_if(counts.begin(), counts.end(), isNonEmpty));
}

void Resize(NBayesInputBase::Matrix& matrix, int rows, int columns) {
    matrix.resize(static_cast<std::size_t>(std::max(rows, 0)));
    for (std::vector<double>& row : matrix)
        row.resize(static_cast<std::size_t>(std::max(columns, 0)), 0.0);
}

}  // namespace

NBayesInputBase::NBayesInputBase() = default;

NBayesInputBase::NBayesInputBase(int categories, int targetCategories) {
    SetSize(categories, targetCategories);
}

NBayesInputBase::~NBayesInputBase() = default;

int NBayesInputBase::SetSize(int categories, int targetCategories) {
    numCategories = categories;
    numNonEmptyCategories = 0;
    numTargetCategories = targetCategories;
    Resize(counts, categories, targetCategories);
    Resize(probabilities, categories, targetCategories);
    return 0;
}

int NBayesInputBase::SetCounts(double threshold, const Matrix& newCounts) {
    std::size_t longest = newCounts[0].size();
    for (const std::vector<double>& row : newCounts)
        longest = std::max(longest, row.size());

    counts = newCounts;
    SetSize(static_cast<int>(newCounts.size()), static_cast<int>(longest));
    ComputeProbabilities(threshold);
    return 0;
}

int NBayesInputBase::ComputeProbabilities(double threshold) {
    const std::vector<double> totals = ColumnTotals(counts, counts.empty() ? 0 : counts[0].size());
    numNonEmptyCategories = CountNonEmptyRows(counts);
    for (std::size_t m = 0; m < counts.size(); ++m) {
        for (std::size_t j = 0; j < totals.size(); ++j) {
            probabilities[m][j] = numNonEmptyCategories < 1
                                      ? threshold
                                      : (threshold + counts[m][j]) / (numNonEmptyCategories * threshold + totals[j]);
        }
    }
    return numNonEmptyCategories;
}

void NBayesInputBase::Display(std::ostream& out) const {
    out << "Begin NBayesInputBase object. "
        << "Number of categories: " << numCategories << ", non-empty categories: " << numNonEmptyCategories
        << ", target categories: " << numTargetCategories << std::endl;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        out << "Category " << i << ": ";
        PrintVector(out, counts[i], "Counts  ");
        PrintVector(out, probabilities[i], "Probability_{mk}^j");
    }
    out << "End of NBayesInputBase display." << std::endl;
}

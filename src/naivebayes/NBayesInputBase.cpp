#include "naivebayes/NBayesInputBase.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <ostream>

#include "framework/MCMV.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Smoothing.h"
#include "naivebayes/StandardFactors.h"

namespace {

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
    TakeCounts(newCounts);
    ComputeProbabilities(threshold);
    return 0;
}

void NBayesInputBase::SetStandardCounts(double threshold, const Matrix& newCounts) {
    if (newCounts.empty()) return;
    TakeCounts(newCounts);
    numNonEmptyCategories = nbscore::CountNonEmptyRows(counts);
    nbscore::StandardConditionals(counts, threshold, probabilities);
}

void NBayesInputBase::TakeCounts(const Matrix& newCounts) {
    std::size_t longest = newCounts[0].size();
    for (const std::vector<double>& row : newCounts)
        longest = std::max(longest, row.size());

    counts = newCounts;
    SetSize(static_cast<int>(newCounts.size()), static_cast<int>(longest));
}

int NBayesInputBase::ComputeProbabilities(double threshold) {
    numNonEmptyCategories = nbscore::SmoothConditionals(counts, threshold, probabilities);
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

void PrintVector(std::ostream& out, const std::vector<double>& vector, const std::string& label) {
    constexpr std::size_t elementsPerLine = 8;
    if (vector.empty()) {
        out << label << ": <empty>"
            << "\n";
        return;
    }
    out << label << " (" << vector.size() << " element" << (vector.size() > 1 ? "s): \n" : "): \n");
    const std::streamsize precision = out.precision(5);
    for (std::size_t i = 0; i < vector.size(); ++i) {
        if (i > 0 && i % elementsPerLine == 0) out << "\n";
        if (MCMV::IsMissing(vector[i])) {
            out << "<missing> ";
        } else {
            out << std::setw(8) << nbscore::DumpNumber(vector[i]) << " ";
        }
    }
    out.precision(precision);
    out << "\n";
}

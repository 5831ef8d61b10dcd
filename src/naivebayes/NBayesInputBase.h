#pragma once

#include <iosfwd>
#include <vector>

#include "framework/Export.h"

/// The count table of one predictor: how often each of its categories was met with each target category, and
/// the conditional probabilities that follow.
///
/// Rows are predictor categories m, columns are target categories j. With the threshold t as pseudo-count,
/// T_j the total of column j and K the number of non-empty rows (those whose total is above zero):
///     P(m | j) = (t + count[m][j]) / (K * t + T_j)
/// Only non-empty categories enter the denominator, but empty ones get a probability too. With no non-empty
/// row at all every probability is t itself.
///
/// Filled on one thread; afterwards any number of threads may read it.
class NAIVEBAYES_API NBayesInputBase {
public:
    using Matrix = std::vector<std::vector<double>>;

    /// A table that was not given counts yet: both sizes are -1.
    NBayesInputBase();
    NBayesInputBase(int categories, int targetCategories);
    virtual ~NBayesInputBase();

    /// Sizes both matrices, keeping what is in range. Always 0.
    int SetSize(int categories, int targetCategories);
    /// Takes the counts (rows shorter than the longest are padded with zeros) and computes the probabilities.
    /// Always 0. No rows at all is a caller's error and stops the process.
    int SetCounts(double threshold, const Matrix& newCounts);
    /// The same, by another rule than that which stands above (StandardFactors.h). Of no rows at all there is nothing.
    void SetStandardCounts(double threshold, const Matrix& newCounts);
    /// Computes the probabilities from the counts; the number of non-empty categories.
    int ComputeProbabilities(double threshold);
    /// Writes the table as text for people.
    void Display(std::ostream& out) const;

    int GetNumCategories() const { return numCategories; }
    int GetNumNonEmptyCategories() const { return numNonEmptyCategories; }
    int GetNumTargetCategories() const { return numTargetCategories; }
    /// Indexed [category][target category].
    const Matrix& GetCounts() const { return counts; }
    const Matrix& GetProbabilities() const { return probabilities; }

private:
    void TakeCounts(const Matrix& newCounts);

    int numCategories = -1;
    int numNonEmptyCategories = 0;
    int numTargetCategories = -1;
    Matrix counts;
    Matrix probabilities;
};

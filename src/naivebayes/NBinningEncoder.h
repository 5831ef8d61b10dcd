#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "naivebayes/INBVeskEncoder.h"

namespace nbscore {

/// The bin of a number: 0 for x <= c[0], k for c[k-1] < x <= c[k], the last one above the last cutpoint.
///
/// @param cutpoints in ascending order; taken as they stand: the search neither checks nor sorts.
inline int FindBin(std::span<const double> cutpoints, double number) {
    int low = 0;
    int high = static_cast<int>(cutpoints.size()) - 1;
    // These start values are kept where there are no cutpoints, on purpose: the single bin then answers 0 for
    // a negative number and 1 for any other. A table without a row for code 1 is found by the model's
    // FindScoringObstacle, and stops the process when scored all the same.
    int middle = 0;
    double cutpoint = 0.0;
    // A NaN is neither equal, nor above, nor below: the search ends at the first cutpoint and answers 1, deliberately.
    while (low <= high) {
        middle = (low + high) / 2;
        cutpoint = cutpoints[static_cast<std::size_t>(middle)];
        if (number == cutpoint) return middle;
        if (cutpoint <= number) {
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return cutpoint > number ? middle : middle + 1;
}

}  // namespace nbscore

/// Codes numbers by the bin they fall into. Every bin is closed on the right: bin 0 is x <= c[0], bin k is
/// c[k-1] < x <= c[k], the last bin is x > the last cutpoint.
class NAIVEBAYES_API NBinningEncoder : public INBVeskEncoder {
public:
    /// Cutpoints are expected in ascending order and taken as they stand: the search neither checks nor
    /// sorts.
    explicit NBinningEncoder(const std::vector<double>& ascendingCutpoints);
    void SetCutpoints(const std::vector<double>& ascendingCutpoints);

    int GetEncoderType() const override;
    /// The number of bins: one more than there are cutpoints.
    int GetNumCategories() const override;
    /// Registers nothing: gives the bin, as GetCategory does.
    int AddCategory(const ScoreValue* value) override;
    int AddCategory(const std::string& text) override;
    int GetCategory(const std::string& text) const override;
    /// The bin of a number; -1 for a value that is no number.
    int GetCategory(const ScoreValue* value) const override;
    INBVeskEncoder* Clone() const override;
    void Display(std::ostream& out) const override;

    const std::vector<double>& GetCutpoints() const { return cutpoints; }

private:
    int numBins = 1;
    std::vector<double> cutpoints;
};

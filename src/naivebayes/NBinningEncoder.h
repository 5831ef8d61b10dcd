#pragma once

#include <string>
#include <vector>

#include "naivebayes/INBVeskEncoder.h"

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

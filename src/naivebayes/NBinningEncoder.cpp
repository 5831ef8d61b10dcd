#include "naivebayes/NBinningEncoder.h"

#include <cstddef>
#include <ostream>

#include "framework/NumericValue.h"
#include "naivebayes/DumpList.h"

NBinningEncoder::NBinningEncoder(const std::vector<double>& ascendingCutpoints) {
    SetCutpoints(ascendingCutpoints);
}

void NBinningEncoder::SetCutpoints(const std::vector<double>& ascendingCutpoints) {
    cutpoints = ascendingCutpoints;
    numBins = static_cast<int>(cutpoints.size()) + 1;
}

int NBinningEncoder::GetEncoderType() const {
    return Binning;
}

int NBinningEncoder::GetNumCategories() const {
    return numBins;
}

int NBinningEncoder::AddCategory(const ScoreValue* value) {
    return GetCategory(value);
}

int NBinningEncoder::AddCategory(const std::string& text) {
    return GetCategory(text);
}

int NBinningEncoder::GetCategory(const std::string& text) const {
    return FindBin(NumericValue(text).GetDouble());
}

int NBinningEncoder::GetCategory(const ScoreValue* value) const {
    return value->GetType() == ScoreValue::Numeric ? FindBin(value->GetDouble()) : unknownCategory;
}

INBVeskEncoder* NBinningEncoder::Clone() const {
    return new NBinningEncoder(*this);
}

void NBinningEncoder::Display(std::ostream& out) const {
    out << "\tNBinningEncoder: number of bins = " << numBins << std::endl;
    out << "\t\tCutpoints: ";
    nbscore::DumpList(out, cutpoints);
    out << std::endl;
}

int NBinningEncoder::FindBin(double number) const {
    int low = 0;
    int high = numBins - 2;
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

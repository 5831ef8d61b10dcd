#include "naivebayes/NBinningEncoder.h"

#include <ostream>

#include "framework/NumericValue.h"
#include "naivebayes/BinSearch.h"
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
    return nbscore::FindBin(cutpoints, NumericValue(text).GetDouble());
}

int NBinningEncoder::GetCategory(const ScoreValue* value) const {
    return value->GetType() == ScoreValue::Numeric ? nbscore::FindBin(cutpoints, value->GetDouble()) : unknownCategory;
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

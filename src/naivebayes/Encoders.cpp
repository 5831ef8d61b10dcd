// The three classes of encoders.

#include <cmath>
#include <cstddef>
#include <ostream>

#include "factors/KnownRows.h"
#include "framework/NumericValue.h"
#include "naivebayes/BorrowedText.h"
#include "naivebayes/Dump.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace {

double NumberOf(const std::string& text) {
    return NumericValue(text).GetDouble();
}

}  // namespace

INBVeskEncoder::~INBVeskEncoder() = default;

NBCatStringEncoder::NBCatStringEncoder(int expectedCategories) {
    if (expectedCategories > 0) codeIndex.reserve(static_cast<std::size_t>(expectedCategories));
}

NBCatStringEncoder::NBCatStringEncoder(const std::vector<std::string>& categories) {
    for (const std::string& category : categories)
        NBCatStringEncoder::AddCategory(category);
}

NBCatStringEncoder::NBCatStringEncoder(const NBCatStringEncoder& other)
    : INBVeskEncoder(other), categoryMap(other.categoryMap), lastCode(other.lastCode) {
    RebuildIndexes();
}

NBCatStringEncoder& NBCatStringEncoder::operator=(const NBCatStringEncoder& other) {
    if (this == &other) return *this;
    categoryMap = other.categoryMap;
    lastCode = other.lastCode;
    RebuildIndexes();
    return *this;
}

int NBCatStringEncoder::GetEncoderType() const {
    return CategoricalString;
}

int NBCatStringEncoder::GetNumCategories() const {
    return lastCode + 1;
}

int NBCatStringEncoder::AddCategory(const ScoreValue* value) {
    return AddCategory(value->GetString());
}

int NBCatStringEncoder::AddCategory(const std::string& text) {
    const auto [entry, isNew] = categoryMap.try_emplace(text, lastCode + 1);
    if (isNew) {
        ++lastCode;
        codeIndex.push_back(&entry->first);
        codesByText.emplace(entry->first, entry->second);
    }
    return entry->second;
}

int NBCatStringEncoder::GetCategory(const std::string& text) const {
    const auto entry = codesByText.find(text);
    return entry == codesByText.end() ? unknownCategory : entry->second;
}

int NBCatStringEncoder::GetCategory(const ScoreValue* value) const {
    return GetCategory(nbscore::BorrowedText(*value).Get());
}

INBVeskEncoder* NBCatStringEncoder::Clone() const {
    return new NBCatStringEncoder(*this);
}

void NBCatStringEncoder::Display(std::ostream& out) const {
    out << "\tNBCatStringEncoder object:  "
        << "Last code = " << lastCode << std::endl;
    for (std::size_t code = 0; code < codeIndex.size(); ++code) {
        out << "\t\t" << code << "\t\t";
        if (codeIndex[code] == nullptr) {
            out << "ERROR\n";
        } else {
            out << *codeIndex[code] << std::endl;
        }
    }
}

void NBCatStringEncoder::RebuildIndexes() {
    codeIndex.assign(categoryMap.size(), nullptr);
    codesByText.clear();
    for (const auto& [text, code] : categoryMap) {
        codeIndex[static_cast<std::size_t>(code)] = &text;
        codesByText.emplace(text, code);
    }
}

NBCatNumericEncoder::NBCatNumericEncoder(int expectedCategories) {
    if (expectedCategories > 0) categoryValues.reserve(static_cast<std::size_t>(expectedCategories));
}

NBCatNumericEncoder::NBCatNumericEncoder(const std::vector<double>& values) {
    for (const double value : values)
        Register(value);
}

int NBCatNumericEncoder::GetEncoderType() const {
    return CategoricalNumeric;
}

int NBCatNumericEncoder::GetNumCategories() const {
    return static_cast<int>(categoryMap.size());
}

int NBCatNumericEncoder::AddCategory(const ScoreValue* value) {
    return Register(value->GetDouble());
}

int NBCatNumericEncoder::AddCategory(const std::string& text) {
    return Register(NumberOf(text));
}

int NBCatNumericEncoder::GetCategory(const std::string& text) const {
    return Find(NumberOf(text));
}

int NBCatNumericEncoder::GetCategory(const ScoreValue* value) const {
    return Find(value->GetDouble());
}

INBVeskEncoder* NBCatNumericEncoder::Clone() const {
    return new NBCatNumericEncoder(*this);
}

void NBCatNumericEncoder::Display(std::ostream& out) const {
    constexpr std::size_t valuesPerLine = 7;
    out << "\tNBCatNumericEncoder: "
        << "Last code = " << lastCode << std::endl;
    out << "\t\tNumeric values of categories: ";
    for (std::size_t code = 0; code < categoryValues.size(); ++code) {
        out << nbscore::DumpNumber(categoryValues[code]) << " ";
        if ((code + 1) % valuesPerLine == 0) out << std::endl;
    }
    out << std::endl;
}

// A NaN has no place in the map's order: it would be taken for whatever key stands first.
int NBCatNumericEncoder::Register(double number) {
    if (std::isnan(number)) return unknownCategory;
    const auto [entry, isNew] = categoryMap.try_emplace(number, lastCode + 1);
    if (isNew) {
        ++lastCode;
        categoryValues.push_back(number);
    }
    return entry->second;
}

int NBCatNumericEncoder::Find(double number) const {
    if (std::isnan(number)) return unknownCategory;
    const auto entry = categoryMap.find(number);
    return entry == categoryMap.end() ? unknownCategory : entry->second;
}

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
    return nbscore::FindBin(cutpoints, NumberOf(text));
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

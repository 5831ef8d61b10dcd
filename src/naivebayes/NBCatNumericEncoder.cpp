#include "naivebayes/NBCatNumericEncoder.h"

#include <cmath>
#include <cstddef>
#include <ostream>

#include "framework/NumericValue.h"
#include "naivebayes/DumpNumber.h"

namespace {

double NumberOf(const std::string& text) {
    return NumericValue(text).GetDouble();
}

}  // namespace

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

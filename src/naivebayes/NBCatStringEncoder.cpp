#include "naivebayes/NBCatStringEncoder.h"

#include <cstddef>
#include <ostream>

#include "naivebayes/BorrowedText.h"

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

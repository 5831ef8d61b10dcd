#pragma once

#include <ostream>
#include <string>

#include "naivebayes/INBVeskEncoder.h"

namespace nbscore::test {

/// An encoder that answers the same code for everything and counts how often its kind is deleted.
class CountedEncoder : public INBVeskEncoder {
public:
    explicit CountedEncoder(int& deletions, int answeredCode = 0) : deleted(&deletions), code(answeredCode) {}
    ~CountedEncoder() override { ++*deleted; }

    int GetEncoderType() const override { return CategoricalString; }
    int GetNumCategories() const override { return code + 1; }
    int AddCategory(const ScoreValue*) override { return code; }
    int AddCategory(const std::string&) override { return code; }
    int GetCategory(const std::string&) const override { return code; }
    int GetCategory(const ScoreValue*) const override { return code; }
    INBVeskEncoder* Clone() const override { return new CountedEncoder(*deleted, code); }
    void Display(std::ostream& out) const override { out << "\tCountedEncoder\n"; }

private:
    int* deleted;
    int code;
};

}  // namespace nbscore::test

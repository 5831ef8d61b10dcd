#pragma once

#include <map>
#include <string>
#include <vector>

#include "naivebayes/INBVeskEncoder.h"

/// Codes numbers. Two numbers are the same category only when they are exactly equal: there is no tolerance.
/// A NaN is no category.
class NAIVEBAYES_API NBCatNumericEncoder : public INBVeskEncoder {
public:
    /// An empty encoder with room for so many categories; more can be added.
    explicit NBCatNumericEncoder(int expectedCategories);
    /// Registers each number in order; a repeated number keeps its first code.
    explicit NBCatNumericEncoder(const std::vector<double>& values);

    int GetEncoderType() const override;
    int GetNumCategories() const override;
    int AddCategory(const ScoreValue* value) override;
    int AddCategory(const std::string& text) override;
    int GetCategory(const std::string& text) const override;
    int GetCategory(const ScoreValue* value) const override;
    INBVeskEncoder* Clone() const override;
    void Display(std::ostream& out) const override;

    /// The categories by code.
    const std::vector<double>& GetCategoryValues() const { return categoryValues; }

private:
    int Register(double number);
    int Find(double number) const;

    std::map<double, int> categoryMap;
    std::vector<double> categoryValues;
    int lastCode = -1;
};

#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "naivebayes/INBVeskEncoder.h"

/// Codes texts. Two texts are the same category only when they are equal byte by byte.
class NAIVEBAYES_API NBCatStringEncoder : public INBVeskEncoder {
public:
    /// An empty encoder with room for so many categories; more can be added.
    explicit NBCatStringEncoder(int expectedCategories);
    /// Registers each text in order; a repeated text keeps its first code.
    explicit NBCatStringEncoder(const std::vector<std::string>& categories);
    NBCatStringEncoder(const NBCatStringEncoder& other);
    NBCatStringEncoder& operator=(const NBCatStringEncoder& other);

    int GetEncoderType() const override;
    int GetNumCategories() const override;
    int AddCategory(const ScoreValue* value) override;
    int AddCategory(const std::string& text) override;
    int GetCategory(const std::string& text) const override;
    int GetCategory(const ScoreValue* value) const override;
    INBVeskEncoder* Clone() const override;
    void Display(std::ostream& out) const override;

    /// The categories by code; the texts are the encoder's own.
    const std::vector<const std::string*>& GetCategoryTexts() const { return codeIndex; }

private:
    void RebuildIndexes();

    std::map<std::string, int> categoryMap;
    /// The map's own keys by code. They point into this map's nodes, so a copy rebuilds them.
    std::vector<const std::string*> codeIndex;
    /// The same keys and codes once more: every value of every case is looked for among them.
    nbscore::SeededMap<std::string_view, int> codesByText;
    int lastCode = -1;
};

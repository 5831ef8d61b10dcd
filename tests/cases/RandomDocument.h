#pragma once

#include <optional>
#include <random>
#include <string>
#include <vector>

#include "support/BruteForceScorer.h"

namespace nbscore::test {

/// One predictor of a random document and what the test itself knows of it.
struct RandomInput {
    enum Kind { DeclaredTexts, DeclaredNumbers, LearnedTexts, LearnedNumbers, Binned };

    std::string name;
    Kind kind = DeclaredTexts;
    /// The text of each category, in the order of the codes; empty for a binned input.
    std::vector<std::string> categories;
    /// Of a binned input: ascending.
    std::vector<double> cutpoints;

    bool IsNumeric() const { return kind == DeclaredNumbers || kind == LearnedNumbers || kind == Binned; }
};

/// One case: the text of each input's cell (empty for absent) and the category it must be coded to (-1 for none).
struct RandomCase {
    std::vector<std::string> cells;
    std::vector<int> codes;
};

/// A document made up at random, as text, and the numbers that went into it.
struct RandomDocument {
    std::string text;
    std::string targetName;
    bool numericTarget = false;
    std::vector<std::string> targetCategories;
    std::vector<RandomInput> inputs;
    BruteForceModel model;
};

using Randomness = std::mt19937_64;

RandomDocument MakeRandomDocument(Randomness& random);
RandomCase MakeRandomCase(const RandomDocument& document, Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <string>
#include <vector>

#include "support/BruteForceScorer.h"
#include "support/documents/RandomInput.h"

namespace nbscore::test {

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

/// What a document declares beside its target, as text.
struct RandomDeclarations {
    std::string dataFields;
    /// A whole `TransformationDictionary`, or nothing.
    std::string transformations;
    std::string schema;
};

RandomDocument MakeRandomDocument(Randomness& random);
/// One with these inputs over these fields.
RandomDocument MakeRandomDocument(std::vector<RandomInput> inputs, const RandomDeclarations& declarations,
                                  Randomness& random);
RandomCase MakeRandomCase(const RandomDocument& document, Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/BruteForceSetScorer.h"
#include "support/documents/RandomInput.h"

namespace nbscore::test {

/// One sub-model of a random set, and what must be known of it to score it.
struct RandomSubModel {
    std::string name;
    /// The fields as this sub-model uses them: each has its own learned categories and cutpoints.
    std::vector<RandomInput> inputs;
    /// Per input, the column of a case that its values stand in.
    std::vector<std::size_t> columns;
    /// Nothing when the document does not say.
    std::optional<double> assessmentMean;
    std::optional<double> assessmentStdDev;
    BruteForceSubModel numbers;
    std::string text;
};

struct RandomTarget {
    std::string name = "target";
    bool numeric = false;
    std::vector<std::string> categories;
};

/// A self-learning document made up at random, as text, and the numbers that went into it.
struct RandomSet {
    std::string text;
    RandomTarget target;
    /// The fields of the dictionary but the target: the columns of a case.
    std::vector<RandomInput> columns;
    /// Derived fields, in document order.
    std::vector<std::string> derivedNames;
    /// Per derived field, the column that it renames.
    std::vector<std::size_t> derivedColumns;
    std::vector<RandomSubModel> subModels;
};

/// One case: the text of each column's cell (empty for absent), and per sub-model and input the category that it must
/// be coded to (-1 for none).
struct RandomSetCase {
    std::vector<std::string> cells;
    std::vector<std::vector<int>> codes;
};

/// A set of 0 to 8 sub-models.
RandomSet MakeRandomSet(Randomness& random);
RandomSetCase MakeRandomSetCase(const RandomSet& set, Randomness& random);

}  // namespace nbscore::test

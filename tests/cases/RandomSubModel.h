#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cases/RandomInput.h"
#include "support/BruteForceSetScorer.h"

namespace nbscore::test {

/// A field that inputs may use: one of the data dictionary, or one that renames another.
struct RandomField {
    RandomInput declared;
    /// Where its values stand in a case.
    std::size_t column = 0;
    bool derived = false;
};

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

/// @param first whether it is a document's first sub-model, whose schema may list no field twice.
RandomSubModel MakeRandomSubModel(bool first, const RandomTarget& target, const std::vector<RandomField>& fields,
                                  Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <string>
#include <vector>

#include "support/documents/RandomDerivedFields.h"
#include "support/documents/RandomDocument.h"

namespace nbscore::test {

/// A random document whose inputs are derived fields, and some data fields.
struct RandomDerivedDocument {
    RandomDocument document;
    /// The columns of a case.
    std::vector<RandomInput> columns;
    std::vector<FieldDeclaration> declarations;
    RandomDerivedFields derived;
};

struct RandomDerivedCase {
    /// One per column, empty for absent.
    std::vector<std::string> cells;
    /// Of all fields.
    BruteForceFields values;
    /// One per input of the document, -1 for none.
    std::vector<int> codes;
};

RandomDerivedDocument MakeRandomDerivedDocument(Randomness& random);
RandomDerivedCase MakeRandomDerivedCase(const RandomDerivedDocument& made, Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <string>
#include <vector>

#include "cases/FieldDeclaration.h"
#include "cases/RandomExpression.h"
#include "cases/RandomInput.h"

namespace nbscore::test {

/// A derived field, and what an input makes of it.
struct RandomDerivedField {
    /// Its name and, where an input reads it, its categories or cutpoints.
    RandomInput input;
    FieldDeclaration declaration;
    BruteForceExpression expression;
};

struct RandomDerivedFields {
    BruteForceFunctions functions;
    /// Each reads those before it at most.
    std::vector<RandomDerivedField> fields;
};

/// Derived fields without categories and cutpoints.
/// @param dataFields what they may read.
RandomDerivedFields MakeRandomDerivedFields(const std::vector<RandomScope::Field>& dataFields, Randomness& random);

/// Adds the values of the derived fields to those of the data fields.
void AddDerivedValues(const RandomDerivedFields& derived, BruteForceFields& values);

/// Everything as a `TransformationDictionary`, in any order.
std::string TransformationsText(const RandomDerivedFields& derived, Randomness& random);

}  // namespace nbscore::test

#pragma once

#include <string>
#include <vector>

#include "support/documents/RandomExpression.h"
#include "support/documents/RandomInput.h"

namespace nbscore::test {

/// What the dictionary says of a random field beside its name and categories.
struct FieldDeclaration {
    std::string dataType;
    /// The texts of a value that means missing and of one that is not valid; empty for no such value.
    std::string missingValue;
    std::string invalidValue;
};

/// A declaration with a data type for numbers or texts, now and then for truth values.
FieldDeclaration MakeFieldDeclaration(bool numeric, Randomness& random);

/// The field with this value, or without one if the value means missing.
/// @param input its categories are the field's valid values where it declares them.
BruteForceField DeclaredField(BruteForceValue value, const FieldDeclaration& declaration, const RandomInput& input);

/// The field as an element of this name.
std::string DeclaredFieldText(const std::string& element, const RandomInput& input, const FieldDeclaration& declaration,
                              const std::string& expression);

/// A derived field, and what an input makes of it.
struct RandomDerivedField {
    /// Its name and, where an input reads it, its categories or cutpoints.
    RandomInput input;
    FieldDeclaration declaration;
    BruteForceExpression expression;
};

struct RandomDerivedFields {
    BruteForceFunctions functions;
    /// Each reads only fields before it.
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

#pragma once

#include <string>

#include "cases/RandomDraws.h"
#include "cases/RandomInput.h"
#include "support/BruteForceExpression.h"

namespace nbscore::test {

/// What the dictionary says of a random field beside its name and categories.
struct FieldDeclaration {
    std::string dataType;
    /// The texts of a value that means none and of one that is not valid; no such value when empty.
    std::string missingValue;
    std::string invalidValue;
};

/// A declaration with a data type for numbers or texts, now and then for truth values.
FieldDeclaration MakeFieldDeclaration(bool numeric, Randomness& random);

/// The field with this value, or without where it is the one that means none.
/// @param input its categories are the field's valid values where it declares them.
BruteForceField DeclaredField(BruteForceValue value, const FieldDeclaration& declaration, const RandomInput& input);

/// The field as an element of this name.
std::string DeclaredFieldText(const std::string& element, const RandomInput& input, const FieldDeclaration& declaration,
                              const std::string& expression);

}  // namespace nbscore::test

#pragma once

#include <string>

#include "pmml/DocumentTree.h"

namespace nbscore {

/// An expression on one line, for people: `if(greaterThan(age, 60), "old", "young")`. Fields stand as they are, texts in
/// quotes. Everything that the expression says is there, but of a table only how many rows it has.
std::string ExpressionText(Element expression);

/// The same of a DefineFunction: `twice(x) = +(x, x)`.
std::string FunctionText(Element function);

}  // namespace nbscore

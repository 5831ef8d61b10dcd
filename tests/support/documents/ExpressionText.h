#pragma once

#include <string>

#include "support/BruteForceExpression.h"

namespace nbscore::test {

/// The expression as an element of a document.
std::string ExpressionText(const BruteForceExpression& expression);

/// The function as a `DefineFunction`.
std::string FunctionText(const std::string& name, const BruteForceFunction& function);

}  // namespace nbscore::test

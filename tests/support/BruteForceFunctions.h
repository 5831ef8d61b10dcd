#pragma once

#include <string>
#include <vector>

#include "support/BruteForceValue.h"

namespace nbscore::test {

/// The result of a built-in function other than `if`, `isValid` and `isNotValid` for these arguments, some of them
/// maybe missing. A number may be infinite or NaN: the caller decides whether that is a result.
BruteForceValue CallByBruteForce(const std::string& function, const std::vector<BruteForceValue>& arguments);

/// The kind of a built-in function's results; any kind for `if`.
BruteForceKind KindGivenByBruteForce(const std::string& function);

}  // namespace nbscore::test

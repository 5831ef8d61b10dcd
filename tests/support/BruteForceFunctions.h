#pragma once

#include <string>
#include <vector>

#include "support/BruteForceValue.h"

namespace nbscore::test {

/// What a built-in function but `if`, `isValid` and `isNotValid` gives for these arguments, missing ones among them. A
/// number may be infinite or none: whether that is a result is for the caller to say.
BruteForceValue CallByBruteForce(const std::string& function, const std::vector<BruteForceValue>& arguments);

/// What a built-in function's results are; of `if`, anything.
BruteForceKind KindGivenByBruteForce(const std::string& function);

}  // namespace nbscore::test

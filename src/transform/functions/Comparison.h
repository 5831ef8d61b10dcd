#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// The six ways to compare two values.
std::span<const BuiltInFunction> ComparisonFunctions();

}  // namespace nbscore

#pragma once

#include <span>

#include "framework/transform/BuiltInFunction.h"

namespace nbscore {

/// The six ways to compare two values.
std::span<const BuiltInFunction> ComparisonFunctions();

}  // namespace nbscore

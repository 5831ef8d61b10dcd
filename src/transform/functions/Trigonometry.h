#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Circular and hyperbolic functions and their inverses; angles are in radians.
std::span<const BuiltInFunction> TrigonometricFunctions();

}  // namespace nbscore

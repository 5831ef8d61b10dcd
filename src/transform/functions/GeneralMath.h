#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Logarithms, powers, roots, roundings and the like.
std::span<const BuiltInFunction> GeneralMathFunctions();

}  // namespace nbscore

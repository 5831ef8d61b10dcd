#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Texts searched for a pattern.
std::span<const BuiltInFunction> RegularExpressionFunctions();

}  // namespace nbscore

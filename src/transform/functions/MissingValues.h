#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Whether there is a value, and a valid one.
std::span<const BuiltInFunction> MissingValueFunctions();

}  // namespace nbscore

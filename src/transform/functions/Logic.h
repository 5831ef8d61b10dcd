#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Three-valued logic.
std::span<const BuiltInFunction> LogicFunctions();

}  // namespace nbscore

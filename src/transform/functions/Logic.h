#pragma once

#include <span>

#include "transform/BuiltInFunction.h"

namespace nbscore {

/// Three-valued logic.
std::span<const BuiltInFunction> LogicFunctions();

}  // namespace nbscore

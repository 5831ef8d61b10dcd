#pragma once

#include <span>

#include "framework/transform/BuiltInFunction.h"

namespace nbscore {

/// Three-valued logic.
std::span<const BuiltInFunction> LogicFunctions();

}  // namespace nbscore

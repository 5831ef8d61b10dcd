#pragma once

#include <span>

#include "transform/BuiltInFunction.h"

namespace nbscore {

/// The choice between two expressions.
std::span<const BuiltInFunction> ConditionalFunctions();

}  // namespace nbscore

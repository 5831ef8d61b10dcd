#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// The choice between two expressions.
std::span<const BuiltInFunction> ConditionalFunctions();

}  // namespace nbscore

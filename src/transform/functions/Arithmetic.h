#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// The four operations of arithmetic.
std::span<const BuiltInFunction> ArithmeticFunctions();

}  // namespace nbscore

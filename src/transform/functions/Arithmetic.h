#pragma once

#include <span>

#include "transform/BuiltInFunction.h"

namespace nbscore {

/// The four operations of arithmetic.
std::span<const BuiltInFunction> ArithmeticFunctions();

}  // namespace nbscore

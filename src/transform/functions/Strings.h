#pragma once

#include <span>

#include "transform/BuiltInFunction.h"

namespace nbscore {

/// Texts as sequences of characters.
std::span<const BuiltInFunction> StringFunctions();

}  // namespace nbscore

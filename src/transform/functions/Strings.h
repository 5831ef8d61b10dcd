#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Texts as sequences of characters.
std::span<const BuiltInFunction> StringFunctions();

}  // namespace nbscore

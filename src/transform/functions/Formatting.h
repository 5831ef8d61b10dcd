#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Numbers and dates written by a pattern.
std::span<const BuiltInFunction> FormattingFunctions();

}  // namespace nbscore

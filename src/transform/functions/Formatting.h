#pragma once

#include <span>

#include "transform/BuiltInFunction.h"

namespace nbscore {

/// Numbers and dates written by a pattern.
std::span<const BuiltInFunction> FormattingFunctions();

}  // namespace nbscore

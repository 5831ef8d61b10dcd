#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Dates and times as distances.
std::span<const BuiltInFunction> DateFunctions();

}  // namespace nbscore

#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// The normal distribution and the error function.
std::span<const BuiltInFunction> DistributionFunctions();

}  // namespace nbscore

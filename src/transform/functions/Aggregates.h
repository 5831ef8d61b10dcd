#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// One number for any number of numbers: min, max, sum, avg, median, product.
std::span<const BuiltInFunction> AggregateFunctions();

}  // namespace nbscore

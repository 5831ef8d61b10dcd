#pragma once

#include <cstdint>

namespace nbscore {

/// The row of a predictor's table of factors that a value stands for. The first two are ones: to multiply by them
/// leaves the predictor out, to the last bit.
using FactorRow = std::uint32_t;

/// There is no value, or the variable calls it missing.
inline constexpr FactorRow missingRow = 0;
/// The value is none of the predictor's categories.
inline constexpr FactorRow unknownRow = 1;
inline constexpr FactorRow firstKnownRow = 2;

}  // namespace nbscore

#pragma once

#include <cstdint>

namespace nbscore {

/// The row of a predictor's table that a value stands for. The first two rows are ones: to multiply by them is to leave
/// the predictor out, to the last bit.
using RowNumber = std::uint32_t;

/// There is no value, or the variable calls it missing.
inline constexpr RowNumber missingRow = 0;
/// The value is none of the predictor's categories.
inline constexpr RowNumber unknownRow = 1;
inline constexpr RowNumber firstKnownRow = 2;

}  // namespace nbscore

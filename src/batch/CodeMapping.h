#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "batch/RowNumber.h"

namespace nbscore {

/// The longest list of rows that MapCodes takes: as many bytes as a vector's instructions look up in at once.
inline constexpr std::size_t longestListOfRows = 16;

/// Replaces codes by rows, many at a time.
/// @param rowsOfCodes the row of each code, that of -1 in front; at most longestListOfRows, each below 256.
/// @param rows room for as many as there are codes.
/// False when a code is below -1 or has no row; what stands in `rows` is then of no use.
bool MapCodes(std::span<const std::int8_t> codes, std::span<const RowNumber> rowsOfCodes, std::uint8_t* rows);

}  // namespace nbscore

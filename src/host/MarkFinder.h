#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nbscore {

/// Finds all delimiters, quotes, carriage returns and line feeds, in their order, and tells how many there are.
/// @param bytes fewer than 4 GB.
/// @param positions room for one for each byte.
std::size_t FindMarks(std::string_view bytes, char delimiter, std::uint32_t* positions);

/// How many lines end in these bytes (see LineEnds.h).
std::size_t CountLineEnds(std::string_view bytes);

}  // namespace nbscore

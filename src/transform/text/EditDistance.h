#pragma once

#include <cstddef>
#include <string>

namespace nbscore {

/// How many characters must be inserted, removed or replaced to make one word of the other; limit + 1 when that is
/// more than the limit. Takes at most EditDistanceCost steps.
std::size_t EditDistance(const std::u32string& left, const std::u32string& right, std::size_t limit);

double EditDistanceCost(const std::u32string& left, const std::u32string& right, std::size_t limit);

}  // namespace nbscore

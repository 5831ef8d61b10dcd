#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

namespace nbscore::bench {

/// What models and tables are drawn with: the same seed draws the same.
using Random = std::mt19937_64;

inline std::size_t Between(std::size_t least, std::size_t greatest, Random& random) {
    return std::uniform_int_distribution<std::size_t>(least, greatest)(random);
}

/// So many different ones of the positions below `all`, in any order.
inline std::vector<std::size_t> DrawSome(std::size_t count, std::size_t all, Random& random) {
    std::vector<std::size_t> positions(all);
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    std::ranges::shuffle(positions, random);
    positions.resize(count);
    return positions;
}

}  // namespace nbscore::bench

#pragma once

#include <cstddef>
#include <iterator>
#include <random>
#include <vector>

/// @file
/// Random draws, the same on every run and machine for the same seed.

namespace nbscore::test {

using Randomness = std::mt19937_64;

inline int Between(int lowest, int highest, Randomness& random) {
    return std::uniform_int_distribution<int>(lowest, highest)(random);
}

inline bool OneIn(int chances, Randomness& random) {
    return Between(1, chances, random) == 1;
}

template <typename Choices>
const auto& OneOf(const Choices& choices, Randomness& random) {
    return choices[static_cast<std::size_t>(Between(0, static_cast<int>(std::size(choices)) - 1, random))];
}

/// This many values, drawn one after the other.
template <typename Draw>
auto DrawEach(int count, const Draw& draw) {
    std::vector<decltype(draw())> drawn;
    for (int i = 0; i < count; ++i)
        drawn.push_back(draw());
    return drawn;
}

}  // namespace nbscore::test

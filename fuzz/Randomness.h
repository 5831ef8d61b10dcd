#pragma once

#include <cstddef>
#include <random>

namespace nbscore::fuzz {

/// Draws from the seed that the fuzzer gives a mutation, so that a run can be repeated.
class Randomness {
public:
    explicit Randomness(unsigned int seed) : engine(seed) {}

    /// A number below the bound, which is above 0.
    std::size_t Below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine); }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }
    /// Some entry of a list that is not empty.
    template <typename List>
    const auto& OneOf(const List& list) {
        return list[Below(list.size())];
    }

private:
    std::minstd_rand engine;
};

}  // namespace nbscore::fuzz

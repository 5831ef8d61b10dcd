#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "naivebayes/TextHash.h"

namespace nbscore {

/// A hash for the standard containers under a seed that each process draws anew: nobody can choose texts that fall
/// together. What is found never depends on it.
struct SeededTextHash {
    std::size_t operator()(std::string_view text) const {
        return static_cast<std::size_t>(HashText(text, GetProcessSeed()));
    }

    static std::uint64_t GetProcessSeed();
};

}  // namespace nbscore

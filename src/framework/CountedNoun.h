#pragma once

#include <cstddef>
#include <string>

namespace nbscore {

/// "1 count table", "3 count tables": a number of things, for messages.
inline std::string CountedNoun(std::size_t number, const std::string& noun) {
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

}  // namespace nbscore

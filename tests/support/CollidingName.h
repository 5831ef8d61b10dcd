#pragma once

#include <string>

namespace nbscore::test {

/// Names for which the XML library's hash is the same: `az` and `bT` change it alike wherever they stand. There are
/// 131,072 of them, 34 letters long.
inline std::string CollidingName(int number) {
    std::string name;
    for (int bit = 0; bit < 17; ++bit)
        name += (number >> bit) % 2 == 0 ? "az" : "bT";
    return name;
}

}  // namespace nbscore::test

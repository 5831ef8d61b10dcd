#include "naivebayes/SeededTextHash.h"

#include <random>

namespace nbscore {

std::uint64_t SeededTextHash::GetProcessSeed() {
    static const std::uint64_t seed = [] {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device();
    }();
    return seed;
}

}  // namespace nbscore

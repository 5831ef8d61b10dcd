#include "framework/SeededHash.h"

#include <random>

namespace nbscore {

const HashSeed& HashSeed::OfProcess() {
    static const HashSeed seed = [] {
        std::random_device device;
        std::array<std::uint64_t, 4> numbers{};
        for (std::uint64_t& number : numbers)
            number = (std::uint64_t{device()} << 32) | device();
        return HashSeed(numbers);
    }();
    return seed;
}

}  // namespace nbscore

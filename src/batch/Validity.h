#pragma once

#include <cstddef>
#include <cstdint>

namespace nbscore {

/// Which entries of a column hold a value, as Arrow marks them: entry i does where bit (offset + i) is set, counted
/// from the lowest bit of the first byte. Without bits all do. The bits are borrowed.
struct Validity {
    const std::uint8_t* bits = nullptr;
    std::size_t offset = 0;

    bool HasValue(std::size_t entry) const {
        if (bits == nullptr) return true;
        const std::size_t position = offset + entry;
        return ((bits[position / 8] >> (position % 8)) & 1U) != 0;
    }
};

}  // namespace nbscore

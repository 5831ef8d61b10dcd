#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace nbscore {

/// A piece of a table that ends where a row ends, or where the table does. May be changed in place.
struct TableBlock {
    /// How many bytes can be read behind the last one that is filled, so that short texts can be loaded whole.
    static constexpr std::size_t slack = 8;

    /// Longer than what is filled by the slack at least, unless nothing is.
    std::vector<char> room;
    /// How much of the room is filled.
    std::size_t size = 0;
    /// The line on which the first row begins, from 1.
    std::uint64_t firstLine = 1;

    std::string_view GetBytes() const { return {room.data(), size}; }
};

}  // namespace nbscore

#pragma once

#include <span>
#include <string_view>

namespace nbscore {

/// The cells of a row of the input.
struct InputRow {
    std::span<const std::string_view> cells;
    /// All of them as a row of the output has them; empty where that is not known.
    std::string_view asWritten;
};

}  // namespace nbscore

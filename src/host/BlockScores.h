#pragma once

#include <cstdint>
#include <string>

namespace nbscore {

/// What came of one block of a table.
struct BlockScores {
    std::string text;
    std::uint64_t rows = 0;
    /// The line of the first case in which some number came out as none or infinite; 0 when there was none.
    std::uint64_t firstNonFiniteLine = 0;

    void Clear() {
        text.clear();
        rows = 0;
        firstNonFiniteLine = 0;
    }
    void NoteNonFinite(std::uint64_t line) {
        if (firstNonFiniteLine == 0) firstNonFiniteLine = line;
    }
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <string_view>

/// @file
/// Lines of tables end in LF, CR or CRLF, by turns if they like: a CR with an LF behind it is one end, not two.

namespace nbscore {

inline bool IsLineBreak(char character) {
    return character == '\n' || character == '\r';
}

/// How long the line end is that begins at a position; 0 where none does.
inline std::size_t LengthOfLineEnd(std::string_view bytes, std::size_t position) {
    if (bytes[position] == '\n') return 1;
    if (bytes[position] != '\r') return 0;
    return position + 1 < bytes.size() && bytes[position + 1] == '\n' ? 2 : 1;
}

}  // namespace nbscore

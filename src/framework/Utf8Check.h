#pragma once

#include <cstddef>
#include <string_view>

#include "framework/Export.h"

namespace nbscore {

/// How far a text was found to be sound UTF-8 without NUL characters.
struct Utf8Check {
    enum class Verdict { Sound, Nul, Invalid, Incomplete };

    Verdict verdict;
    /// Where the character at fault begins; where the next character begins when all are sound.
    std::size_t position;
};

/// Checks the characters that begin from one offset up to before another. Overlong forms, surrogates and what lies
/// above U+10FFFF are invalid. A character that the text's end cuts short, but that may still become a sound one,
/// is incomplete.
SCOREFRAMEWORK_API Utf8Check CheckUtf8(std::string_view text, std::size_t from, std::size_t to);

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "framework/Export.h"

namespace nbscore {

/// How many bytes the control character takes with which a UTF-8 text begins; 0 where it begins with none. Control
/// characters are those below U+0020, U+007F to U+009F, those that end lines and paragraphs (U+2028, U+2029), and those
/// that change the direction of writing: U+061C, U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069.
SCOREFRAMEWORK_API std::size_t LengthOfControl(std::string_view utf8);

/// For messages that quote somebody else's text: the UTF-8 text with a question mark for each control character, so
/// that it can neither break a line, nor send commands to a terminal, nor turn around what is read.
SCOREFRAMEWORK_API std::string MaskControls(std::string_view utf8);

}  // namespace nbscore

#pragma once

#include <string>
#include <string_view>

#include "framework/Export.h"

namespace nbscore {

/// For messages that quote somebody else's text: the UTF-8 text with a question mark for each control character, U+0080
/// to U+009F included, so that it can neither break a line nor send commands to a terminal.
SCOREFRAMEWORK_API std::string MaskControls(std::string_view utf8);

}  // namespace nbscore

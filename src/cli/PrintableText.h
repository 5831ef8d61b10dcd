#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// A text for a message, in which control characters (LengthOfControl) are written as escapes: names and cells come
/// from elsewhere and must neither break the line nor steer the terminal.
std::string MakePrintable(std::string_view text);

/// Each byte as an escape, such as \x1b.
void AppendEscaped(std::string& printable, std::string_view bytes);

}  // namespace nbscore

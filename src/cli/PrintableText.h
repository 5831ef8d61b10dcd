#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// A text for a message, in which control characters (LengthOfControl) are written as escapes: names and cells come
/// from elsewhere and must neither break the line nor steer the terminal.
std::string MakePrintable(std::string_view text);

}  // namespace nbscore

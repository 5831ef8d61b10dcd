#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// A text from somebody else's file, ready for an error message: in quotes, without control characters (each
/// becomes a question mark), and cut with "..." where it is long.
std::string QuoteForMessage(std::string_view text);

}  // namespace nbscore

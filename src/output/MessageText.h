#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// A text from somebody else's file, ready for an error message: in quotes, without control characters (each
/// becomes a question mark), and cut with "..." where it is long.
std::string QuoteForMessage(std::string_view text);

/// Several such texts, quoted, with commas between; how many more there are stands for those behind the tenth.
std::string ListForMessage(const std::vector<std::string>& texts);

}  // namespace nbscore

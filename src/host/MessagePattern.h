#pragma once

#include <string_view>

namespace nbscore {

/// Whether a message is of the form of a pattern: the same text, where each `*` of the pattern stands for any text, and
/// for none.
bool FitsPattern(std::string_view message, std::string_view pattern);

}  // namespace nbscore

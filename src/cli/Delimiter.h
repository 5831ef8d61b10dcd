#pragma once

#include <optional>
#include <string_view>

namespace nbscore {

/// The character that stands between cells, from the text of an option: one ASCII character, or "tab" or "\t"
/// for a tabulator. Nothing for what cannot be one: a quote, a line break, NUL, other texts.
std::optional<char> ReadDelimiter(std::string_view text);

}  // namespace nbscore

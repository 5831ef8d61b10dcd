#pragma once

#include <string>
#include <vector>

namespace nbscore {

/// What to say where a header's cells seem to stand between other characters than those that the table was read with:
/// "seem to stand between ...: try ...". Empty where they do not seem to.

/// @param character the one behind a cell's closing quote, where none may stand.
std::string SuggestDelimiter(char character);
/// @param columns the header's cells.
/// @param lackingName the name of a column that is not among them, but perhaps within one.
std::string SuggestDelimiter(const std::vector<std::string>& columns, const std::string& lackingName);

}  // namespace nbscore

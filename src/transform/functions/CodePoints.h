#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nbscore {

/// Texts as sequences of Unicode code points in UTF-8. A byte that is no part of one counts as a character of its own.

/// The bytes of the first character; 0 for the empty text.
std::size_t SizeOfFirstCharacter(std::string_view text);

std::size_t CountCharacters(std::string_view text);

/// The text without its first characters, so many of them or all that there are.
std::string_view WithoutCharacters(std::string_view text, double count);

/// The text's first characters, so many of them or all that there are.
std::string_view FirstCharacters(std::string_view text, double count);

/// Every character on its own by Unicode's simple case mapping: one character never becomes two.
std::string UpperCaseOf(std::string_view text);
std::string LowerCaseOf(std::string_view text);

}  // namespace nbscore

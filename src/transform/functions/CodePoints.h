#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nbscore {

/// @file
/// Texts as sequences of Unicode code points in UTF-8. A byte that is not part of one counts as a character.

/// The bytes of the first character; 0 for the empty text.
std::size_t SizeOfFirstCharacter(std::string_view text);

std::size_t CountCharacters(std::string_view text);

/// The text without its first characters; empty when it has no more than that.
std::string_view WithoutCharacters(std::string_view text, double count);

/// The text's first characters; the whole text when it has no more than that.
std::string_view FirstCharacters(std::string_view text, double count);

/// Each character mapped by Unicode's simple case mapping: one character never becomes two.
std::string UpperCaseOf(std::string_view text);
std::string LowerCaseOf(std::string_view text);

}  // namespace nbscore

#pragma once

#include <string_view>

namespace nbscore {

/// What may stand around texts and means nothing: space, tab and line ends, as in XML.
inline constexpr std::string_view blanks = " \t\r\n";

/// For a unit of any encoding that ASCII is part of.
constexpr bool IsBlank(char32_t unit) {
    return unit < 0x80 && blanks.find(static_cast<char>(unit)) != std::string_view::npos;
}

/// The part of the text between the blanks at its ends.
constexpr std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The same of a text that has more than blanks; one of nothing but blanks stays as it is.
constexpr std::string_view WithoutOuterBlanks(std::string_view text) {
    const std::string_view trimmed = WithoutBlanks(text);
    return trimmed.empty() ? text : trimmed;
}

}  // namespace nbscore

#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <string>
#include <string_view>

#include "framework/Export.h"

/// @file
/// Between the UTF-16 of the XML library and UTF-8. Half of a UTF-16 pair becomes three bytes that are no valid UTF-8,
/// so that no text is lost that a host's own DOM may have.

namespace nbscore {

/// Appends the UTF-8 form of a UTF-16 text.
SCOREFRAMEWORK_API void AppendUtf8(std::string& utf8, const XMLCh* xmlText, std::size_t size);
/// Appends the UTF-8 form of one character.
void AppendCharacter(std::string& utf8, char32_t character);
/// The units that the UTF-16 form of a sound text has.
SCOREFRAMEWORK_API std::size_t CountUtf16(std::string_view utf8);
/// Null is the empty text.
SCOREFRAMEWORK_API std::string Utf8Of(const XMLCh* xmlText);
SCOREFRAMEWORK_API std::basic_string<XMLCh> Utf16Of(std::string_view utf8);

SCOREFRAMEWORK_API bool HasHalfPair(std::string_view utf8);
/// With U+FFFD in the place of each half.
SCOREFRAMEWORK_API std::string WithoutHalfPairs(std::string_view utf8);

/// For messages that quote a document: cut behind maxQuotedUnits of UTF-16 with "..." in their place, control
/// characters as '?', so that no document can send commands to a terminal, and halves of pairs as U+FFFD.
SCOREFRAMEWORK_API std::string ExcerptOf(std::string_view utf8);
inline constexpr std::size_t maxQuotedUnits = 80;

}  // namespace nbscore

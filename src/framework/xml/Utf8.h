#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <string>
#include <string_view>

#include "framework/Export.h"

namespace nbscore {

/// Appends the UTF-8 form of a UTF-16 text; false, and a part appended, when a surrogate lacks its partner.
bool AppendUtf8(std::string& utf8, const XMLCh* xmlText);

/// True when the UTF-8 form of the XML text is exactly the other text. Null is the empty text.
bool EqualsUtf8(const XMLCh* xmlText, std::string_view utf8);

/// For messages: never fails, a surrogate without its partner becomes U+FFFD. Null is the empty text.
SCOREFRAMEWORK_API std::string Utf8Of(const XMLCh* xmlText);

/// For messages that quote a document: the same, cut behind maxQuotedUnits with "..." in its place, and with
/// control characters as '?', so that no document can send commands to a terminal.
SCOREFRAMEWORK_API std::string ExcerptOf(const XMLCh* xmlText);
inline constexpr int maxQuotedUnits = 80;

}  // namespace nbscore

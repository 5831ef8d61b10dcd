#pragma once

#include <string>
#include <string_view>

namespace nbscore::fuzz {

/// Bytes as a UTF-8 text that XML can hold: those of ASCII stand for themselves, control characters aside, and all
/// others for some character of two, three or four bytes.
std::string AsXmlCharacters(std::string_view bytes);

/// The text with what XML would take for markup written otherwise.
std::string EscapedXml(std::string_view text);

}  // namespace nbscore::fuzz

#pragma once

#include <string>
#include <string_view>

namespace nbscore::fuzz {

/// Bytes as a UTF-8 text that XML can hold: those of ASCII stand for themselves, control characters aside, and all
/// others for some character of two, three or four bytes.
std::string AsXmlCharacters(std::string_view bytes);

}  // namespace nbscore::fuzz

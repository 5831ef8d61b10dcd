#include "XmlCharacters.h"

#include <array>

namespace nbscore::fuzz {
namespace {

/// Letters with two cases, one that grows in upper case, a mark that joins the letter before it, a blank, and others.
constexpr std::array<std::string_view, 8> characters = {"\u00E4", "\u00DF",     "\u0130",     "\u0301",
                                                        "\u2003", "\U0001F600", "\U00010428", "\u4E2D"};

}  // namespace

std::string AsXmlCharacters(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) {
            text += characters[byte % characters.size()];
        } else {
            text += byte < 0x20 || byte == 0x7F ? ' ' : c;
        }
    }
    return text;
}

}  // namespace nbscore::fuzz

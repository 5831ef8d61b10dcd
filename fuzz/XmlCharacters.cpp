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

std::string EscapedXml(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '<':
                escaped += "&lt;";
                break;
            case '&':
                escaped += "&amp;";
                break;
            case '\'':
                escaped += "&apos;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

}  // namespace nbscore::fuzz

#include "framework/xml/Utf8.h"

#include <xercesc/util/XMLString.hpp>

#include <array>
#include <cstddef>

#include "framework/ControlCharacters.h"

namespace nbscore {
namespace {

constexpr char32_t brokenPair = 0x110000;
constexpr char32_t replacement = 0xFFFD;

bool IsLeading(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrailing(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The character at the pointer, which steps past it; brokenPair for half a pair. The text ends with a zero, so
/// looking at the unit after a leading surrogate stays inside it.
char32_t NextCharacter(const XMLCh*& position) {
    const char32_t unit = *position++;
    if (!IsLeading(unit)) return IsTrailing(unit) ? brokenPair : unit;
    const char32_t partner = *position;
    if (!IsTrailing(partner)) return brokenPair;
    ++position;
    return 0x10000 + ((unit - 0xD800) << 10) + (partner - 0xDC00);
}

struct EncodedCharacter {
    std::array<char, 4> bytes{};
    std::size_t size = 0;

    explicit EncodedCharacter(char32_t character) {
        if (character < 0x80) {
            Add(character);
        } else if (character < 0x800) {
            Add(0xC0 | (character >> 6));
            Add(0x80 | (character & 0x3F));
        } else if (character < 0x10000) {
            Add(0xE0 | (character >> 12));
            Add(0x80 | ((character >> 6) & 0x3F));
            Add(0x80 | (character & 0x3F));
        } else {
            Add(0xF0 | (character >> 18));
            Add(0x80 | ((character >> 12) & 0x3F));
            Add(0x80 | ((character >> 6) & 0x3F));
            Add(0x80 | (character & 0x3F));
        }
    }
    void Add(char32_t byte) { bytes[size++] = static_cast<char>(static_cast<unsigned char>(byte)); }
    std::string_view Text() const { return {bytes.data(), size}; }
};

}  // namespace

bool AppendUtf8(std::string& utf8, const XMLCh* xmlText) {
    if (!xmlText) return true;
    utf8.reserve(utf8.size() + xercesc::XMLString::stringLen(xmlText));
    while (*xmlText != 0) {
        const char32_t character = NextCharacter(xmlText);
        if (character == brokenPair) return false;
        utf8 += EncodedCharacter(character).Text();
    }
    return true;
}

bool EqualsUtf8(const XMLCh* xmlText, std::string_view utf8) {
    if (!xmlText) return utf8.empty();
    while (*xmlText != 0) {
        const char32_t character = NextCharacter(xmlText);
        if (character == brokenPair) return false;
        const EncodedCharacter encoded(character);
        if (!utf8.starts_with(encoded.Text())) return false;
        utf8.remove_prefix(encoded.size);
    }
    return utf8.empty();
}

std::string Utf8Of(const XMLCh* xmlText) {
    std::string utf8;
    while (xmlText && *xmlText != 0) {
        const char32_t character = NextCharacter(xmlText);
        utf8 += EncodedCharacter(character == brokenPair ? replacement : character).Text();
    }
    return utf8;
}

std::string ExcerptOf(const XMLCh* xmlText) {
    std::string excerpt;
    const XMLCh* const start = xmlText;
    while (xmlText && *xmlText != 0) {
        if (xmlText - start >= maxQuotedUnits) return MaskControls(excerpt) + "...";
        const char32_t character = NextCharacter(xmlText);
        excerpt += EncodedCharacter(character == brokenPair ? replacement : character).Text();
    }
    return MaskControls(excerpt);
}

}  // namespace nbscore

#include "pmml/Utf8.h"

#include <algorithm>

#include "framework/ControlCharacters.h"

namespace nbscore {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool IsLeading(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrailing(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char Byte(char32_t byte) {
    return static_cast<char>(static_cast<unsigned char>(byte));
}

unsigned char UnsignedAt(std::string_view utf8, std::size_t position) {
    return static_cast<unsigned char>(utf8[position]);
}

/// Of the character that begins with this byte, in a text that AppendUtf8 made or a parser checked.
std::size_t LengthOfCharacter(unsigned char first) {
    if (first < 0xC0) return 1;
    if (first < 0xE0) return 2;
    return first < 0xF0 ? 3 : 4;
}

/// Where the next half of a pair stands; npos where none does.
std::size_t FindHalfPair(std::string_view utf8, std::size_t from) {
    for (std::size_t at = utf8.find('\xED', from); at != std::string_view::npos; at = utf8.find('\xED', at + 1)) {
        if (at + 1 < utf8.size() && UnsignedAt(utf8, at + 1) >= 0xA0) return at;
    }
    return std::string_view::npos;
}

}  // namespace

void AppendCharacter(std::string& utf8, char32_t character) {
    if (character < 0x80) {
        utf8 += Byte(character);
    } else if (character < 0x800) {
        utf8 += {Byte(0xC0 | (character >> 6)), Byte(0x80 | (character & 0x3F))};
    } else if (character < 0x10000) {
        utf8 +=
            {Byte(0xE0 | (character >> 12)), Byte(0x80 | ((character >> 6) & 0x3F)), Byte(0x80 | (character & 0x3F))};
    } else {
        utf8 += {Byte(0xF0 | (character >> 18)), Byte(0x80 | ((character >> 12) & 0x3F)),
                 Byte(0x80 | ((character >> 6) & 0x3F)), Byte(0x80 | (character & 0x3F))};
    }
}

std::size_t CountUtf16(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::ranges::count_if(utf8, [](char c) { return (c & 0xC0) != 0x80; }) +
        std::ranges::count_if(utf8, [](char c) { return static_cast<unsigned char>(c) >= 0xF0; }));
}

void AppendUtf8(std::string& utf8, const XMLCh* xmlText, std::size_t size) {
    const std::size_t before = utf8.size();
    utf8.resize(before + size);
    std::size_t i = 0;
    for (; i < size && xmlText[i] < 0x80; ++i)
        utf8[before + i] = static_cast<char>(xmlText[i]);
    utf8.resize(before + i);
    while (i < size) {
        char32_t character = xmlText[i++];
        if (IsLeading(character) && i < size && IsTrailing(xmlText[i])) {
            character = 0x10000 + ((character - 0xD800) << 10) + (xmlText[i++] - char32_t{0xDC00});
        }
        AppendCharacter(utf8, character);
    }
}

std::string Utf8Of(const XMLCh* xmlText) {
    std::string utf8;
    if (xmlText != nullptr) AppendUtf8(utf8, xmlText, std::char_traits<XMLCh>::length(xmlText));
    return utf8;
}

std::basic_string<XMLCh> Utf16Of(std::string_view utf8) {
    std::basic_string<XMLCh> text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = std::min(LengthOfCharacter(UnsignedAt(utf8, i)), utf8.size() - i);
        char32_t character = length == 1 ? UnsignedAt(utf8, i) : UnsignedAt(utf8, i) & (0x7FU >> length);
        for (std::size_t k = 1; k < length; ++k)
            character = (character << 6) | (UnsignedAt(utf8, i + k) & 0x3FU);
        i += length;
        if (character < 0x10000) {
            text += static_cast<XMLCh>(character);
        } else {
            text += static_cast<XMLCh>(0xD800 + ((character - 0x10000) >> 10));
            text += static_cast<XMLCh>(0xDC00 + (character & 0x3FF));
        }
    }
    return text;
}

bool HasHalfPair(std::string_view utf8) {
    return FindHalfPair(utf8, 0) != std::string_view::npos;
}

std::string WithoutHalfPairs(std::string_view utf8) {
    std::string whole(utf8);
    constexpr std::size_t lengthOfHalf = 3;
    for (std::size_t at = FindHalfPair(whole, 0); at != std::string::npos; at = FindHalfPair(whole, at))
        whole.replace(at, lengthOfHalf, replacement);
    return whole;
}

std::string ExcerptOf(std::string_view utf8) {
    std::size_t units = 0;
    std::size_t end = 0;
    while (end < utf8.size() && units < maxQuotedUnits) {
        const std::size_t length = LengthOfCharacter(UnsignedAt(utf8, end));
        units += length == 4 ? 2 : 1;
        end = std::min(end + length, utf8.size());
    }
    return MaskControls(WithoutHalfPairs(utf8.substr(0, end))) + (end < utf8.size() ? "..." : "");
}

}  // namespace nbscore

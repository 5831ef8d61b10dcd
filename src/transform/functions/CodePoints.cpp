#include "transform/functions/CodePoints.h"

#include <utf8proc.h>

#include <array>

namespace nbscore {
namespace {

struct FirstCharacter {
    std::size_t size = 0;
    /// Negative for a byte that is not part of a character.
    utf8proc_int32_t codePoint = -1;
};

FirstCharacter FirstCharacterOf(std::string_view text) {
    if (text.empty()) return {};
    FirstCharacter first;
    // The library counts in signed numbers; no character is longer than four bytes.
    const std::string_view start = text.substr(0, 4);
    const auto size = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(start.data()),
                                       static_cast<utf8proc_ssize_t>(start.size()), &first.codePoint);
    first.size = size > 0 ? static_cast<std::size_t>(size) : 1;
    return first;
}

void AppendCodePoint(std::string& text, utf8proc_int32_t codePoint) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto size = utf8proc_encode_char(codePoint, bytes.data());
    text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(size));
}

std::string Mapped(std::string_view text, utf8proc_int32_t (*map)(utf8proc_int32_t)) {
    std::string mapped;
    mapped.reserve(text.size());
    while (!text.empty()) {
        const FirstCharacter first = FirstCharacterOf(text);
        if (first.codePoint < 0) {
            mapped += text.front();
        } else {
            AppendCodePoint(mapped, map(first.codePoint));
        }
        text.remove_prefix(first.size);
    }
    return mapped;
}

// The library maps the small sharp s to its capital; Unicode's simple mapping leaves it as it is.
utf8proc_int32_t ToUpper(utf8proc_int32_t codePoint) {
    constexpr utf8proc_int32_t sharpS = 0xDF;
    return codePoint == sharpS ? sharpS : utf8proc_toupper(codePoint);
}

utf8proc_int32_t ToLower(utf8proc_int32_t codePoint) {
    return utf8proc_tolower(codePoint);
}

/// Where the first `count` characters end.
std::size_t EndOfCharacters(std::string_view text, double count) {
    std::size_t end = 0;
    for (std::size_t passed = 0; static_cast<double>(passed) < count && end < text.size(); ++passed)
        end += SizeOfFirstCharacter(text.substr(end));
    return end;
}

}  // namespace

std::size_t SizeOfFirstCharacter(std::string_view text) {
    return FirstCharacterOf(text).size;
}

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(SizeOfFirstCharacter(text)))
        ++count;
    return count;
}

std::string_view WithoutCharacters(std::string_view text, double count) {
    return text.substr(EndOfCharacters(text, count));
}

std::string_view FirstCharacters(std::string_view text, double count) {
    return text.substr(0, EndOfCharacters(text, count));
}

std::string UpperCaseOf(std::string_view text) {
    return Mapped(text, ToUpper);
}

std::string LowerCaseOf(std::string_view text) {
    return Mapped(text, ToLower);
}

}  // namespace nbscore

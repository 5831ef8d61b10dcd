#include "framework/ControlCharacters.h"

#include <algorithm>

namespace nbscore {
namespace {

/// U+0080 to U+009F and U+061C take two bytes.
bool BeginsControlOfTwoBytes(std::string_view text) {
    if (text.starts_with("\xD8\x9C")) return true;
    if (text.size() < 2 || text[0] != '\xC2') return false;
    const auto second = static_cast<unsigned char>(text[1]);
    return second >= 0x80 && second <= 0x9F;
}

/// U+2000 to U+207F take three bytes, of which the first is the same and the second nearly.
bool BeginsControlOfThreeBytes(std::string_view text) {
    if (text.size() < 3 || text[0] != '\xE2') return false;
    const auto third = static_cast<unsigned char>(text[2]);
    if (text[1] == '\x80') return third == 0x8E || third == 0x8F || (third >= 0xA8 && third <= 0xAE);
    return text[1] == '\x81' && third >= 0xA6 && third <= 0xA9;
}

}  // namespace

std::size_t LengthOfControl(std::string_view utf8) {
    if (utf8.empty()) return 0;
    const auto first = static_cast<unsigned char>(utf8.front());
    if (first < 0x20 || first == 0x7F) return 1;
    if (BeginsControlOfTwoBytes(utf8)) return 2;
    return BeginsControlOfThreeBytes(utf8) ? 3 : 0;
}

std::string MaskControls(std::string_view utf8) {
    std::string masked;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t length = LengthOfControl(utf8.substr(i));
        masked += length > 0 ? '?' : utf8[i];
        i += std::max<std::size_t>(length, 1);
    }
    return masked;
}

}  // namespace nbscore

#include "framework/ControlCharacters.h"

namespace nbscore {
namespace {

bool IsControl(unsigned char byte) {
    return byte < 0x20 || byte == 0x7F;
}

/// U+0080 to U+009F take two bytes.
bool BeginsLongControl(std::string_view text) {
    if (text.size() < 2 || text[0] != '\xC2') return false;
    const auto second = static_cast<unsigned char>(text[1]);
    return second >= 0x80 && second <= 0x9F;
}

}  // namespace

std::string MaskControls(std::string_view utf8) {
    std::string masked;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const bool isLong = BeginsLongControl(utf8.substr(i));
        masked += isLong || IsControl(static_cast<unsigned char>(utf8[i])) ? '?' : utf8[i];
        if (isLong) ++i;
    }
    return masked;
}

}  // namespace nbscore

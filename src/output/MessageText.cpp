#include "output/MessageText.h"

#include <algorithm>

#include "framework/ControlCharacters.h"

namespace nbscore {
namespace {

constexpr std::size_t maxShownBytes = 80;
constexpr std::size_t maxListedTexts = 10;

/// The longest front of at most so many bytes that cuts no UTF-8 character in two.
std::string_view CutAtCharacter(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) return text;
    std::size_t length = maxBytes;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        --length;
    }
    return text.substr(0, length);
}

}  // namespace

std::string QuoteForMessage(std::string_view text) {
    const std::string_view shown = CutAtCharacter(text, maxShownBytes);
    std::string quoted = '"' + MaskControls(shown);
    if (shown.size() < text.size()) quoted += "...";
    return quoted + '"';
}

std::string ListForMessage(const std::vector<std::string>& texts) {
    std::string list;
    for (std::size_t i = 0; i < std::min(texts.size(), maxListedTexts); ++i) {
        list += (i == 0 ? "" : ", ") + QuoteForMessage(texts[i]);
    }
    if (texts.size() > maxListedTexts) list += " and " + std::to_string(texts.size() - maxListedTexts) + " more";
    return list;
}

}  // namespace nbscore

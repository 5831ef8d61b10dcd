#include "cli/verbs/Options.h"

namespace nbscore {

std::filesystem::path PathFromArgument(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string RefuseEmptyName(const std::string& text) {
    return text.empty() ? "the name is empty" : "";
}

std::optional<char> ReadDelimiter(std::string_view text) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() != 1) return std::nullopt;
    const char character = text.front();
    const bool ascii = static_cast<unsigned char>(character) < 0x80;
    const bool reserved = character == '"' || character == '\r' || character == '\n' || character == '\0';
    if (!ascii || reserved) return std::nullopt;
    return character;
}

}  // namespace nbscore

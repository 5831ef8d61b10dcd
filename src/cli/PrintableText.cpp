#include "cli/PrintableText.h"

namespace nbscore {
namespace {

bool IsControl(unsigned char byte) {
    return byte < 0x20 || byte == 0x7F;
}

/// A control character of two bytes in UTF-8, U+0080 to U+009F: terminals take some of them as commands too.
bool BeginsLongControl(std::string_view text) {
    if (text.size() < 2 || text[0] != '\xC2') return false;
    const auto second = static_cast<unsigned char>(text[1]);
    return second >= 0x80 && second <= 0x9F;
}

void AppendEscaped(std::string& printable, unsigned char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    printable += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
}

}  // namespace

std::string MakePrintable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (text[i] == '\n') {
            printable += "\\n";
        } else if (IsControl(byte)) {
            AppendEscaped(printable, byte);
        } else if (BeginsLongControl(text.substr(i))) {
            AppendEscaped(printable, byte);
            AppendEscaped(printable, static_cast<unsigned char>(text[++i]));
        } else {
            printable += text[i];
        }
    }
    return printable;
}

}  // namespace nbscore

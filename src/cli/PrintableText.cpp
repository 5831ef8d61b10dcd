#include "cli/PrintableText.h"

namespace nbscore {

std::string MakePrintable(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string printable;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20 && code != 0x7f) {
            printable += character;
        } else if (character == '\n') {
            printable += "\\n";
        } else {
            printable += {'\\', 'x', digits[code / 16], digits[code % 16]};
        }
    }
    return printable;
}

}  // namespace nbscore

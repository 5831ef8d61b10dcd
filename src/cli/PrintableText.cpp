#include "cli/PrintableText.h"

#include <algorithm>

#include "framework/ControlCharacters.h"

namespace nbscore {
namespace {

void AppendEscaped(std::string& printable, unsigned char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    printable += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
}

}  // namespace

std::string MakePrintable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = LengthOfControl(text.substr(i));
        if (text[i] == '\n') {
            printable += "\\n";
        } else if (length == 0) {
            printable += text[i];
        } else {
            for (const char byte : text.substr(i, length))
                AppendEscaped(printable, static_cast<unsigned char>(byte));
        }
        i += std::max<std::size_t>(length, 1);
    }
    return printable;
}

}  // namespace nbscore

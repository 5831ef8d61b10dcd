#include "cli/PrintableText.h"

#include <algorithm>

#include "framework/ControlCharacters.h"

namespace nbscore {

std::string MakePrintable(std::string_view text) {
    std::string printable;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = LengthOfControl(text.substr(i));
        if (text[i] == '\n') {
            printable += "\\n";
        } else if (length == 0) {
            printable += text[i];
        } else {
            AppendEscaped(printable, text.substr(i, length));
        }
        i += std::max<std::size_t>(length, 1);
    }
    return printable;
}

void AppendEscaped(std::string& printable, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        printable += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
}

}  // namespace nbscore

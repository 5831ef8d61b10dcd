#include "support/documents/Markup.h"

#include <array>
#include <cstdio>

namespace nbscore::test {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<')
            escaped += "&lt;";
        else if (c == '&')
            escaped += "&amp;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += c;
    }
    return escaped;
}

std::string Attribute(std::string_view name, std::string_view value) {
    return std::string(" ").append(name).append("=\"").append(Escaped(value)).append("\"");
}

std::string XmlElement(std::string_view name, std::string_view attributes) {
    return std::string("<").append(name).append(attributes).append("/>");
}

std::string XmlElement(std::string_view name, std::string_view attributes, std::string_view content) {
    std::string element = "<";
    element.append(name).append(attributes).append(">").append(content);
    return element.append("</").append(name).append(">");
}

std::string Digits(double number) {
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.17g", number);
    return buffer.data();
}

}  // namespace nbscore::test

#include "cases/DocumentText.h"

#include <array>
#include <cstdio>

namespace nbscore::test {
std::string Escaped(const std::string& text) {
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

std::string Digits(double number) {
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.17g", number);
    return buffer.data();
}

std::string Attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + Escaped(value) + "\"";
}

std::string DeclarationText(const std::string& name, bool numeric, bool continuous) {
    return Attribute("name", name) + Attribute("optype", continuous ? "continuous" : "categorical") +
           Attribute("dataType", numeric ? "double" : "string");
}

std::string ValuesText(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values)
        text += "<Value" + Attribute("value", value) + "/>";
    return text;
}

}  // namespace nbscore::test

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/NumberText.h"

namespace nbscore {

/// Writes a document element by element, two blanks deeper for each level.
class XmlWriter {
public:
    XmlWriter() : text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

    XmlWriter& Open(std::string_view name) {
        CloseStartTag();
        text.append(2 * open.size(), ' ');
        text += '<';
        text += name;
        open.emplace_back(name);
        isInStartTag = true;
        return *this;
    }
    XmlWriter& Attribute(std::string_view name, std::string_view value) {
        text += ' ';
        text += name;
        text += "=\"";
        AppendEscaped(value);
        text += '"';
        return *this;
    }
    XmlWriter& Attribute(std::string_view name, double value) { return Attribute(name, FormatNumber(value)); }
    void Close() {
        const std::string name = open.back();
        open.pop_back();
        if (isInStartTag) {
            text += "/>\n";
        } else {
            text.append(2 * open.size(), ' ');
            text += "</" + name + ">\n";
        }
        isInStartTag = false;
    }
    /// Ends an element that holds nothing but a text.
    void CloseWithText(std::string_view content) {
        text += '>';
        AppendEscaped(content);
        text += "</" + open.back() + ">\n";
        open.pop_back();
        isInStartTag = false;
    }

    /// All that was written.
    std::string Take() { return std::move(text); }

private:
    void CloseStartTag() {
        if (isInStartTag) text += ">\n";
        isInStartTag = false;
    }
    /// Blanks but the plain one as references, because as they stand a reader takes them for others.
    void AppendEscaped(std::string_view content) {
        for (const char character : content) {
            switch (character) {
                case '&':
                    text += "&amp;";
                    break;
                case '<':
                    text += "&lt;";
                    break;
                case '>':
                    text += "&gt;";
                    break;
                case '"':
                    text += "&quot;";
                    break;
                case '\t':
                    text += "&#9;";
                    break;
                case '\n':
                    text += "&#10;";
                    break;
                case '\r':
                    text += "&#13;";
                    break;
                default:
                    text += character;
            }
        }
    }

    std::string text;
    std::vector<std::string> open;
    bool isInStartTag = false;
};

}  // namespace nbscore

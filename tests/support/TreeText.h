#pragma once

#include <string>

#include "pmml/DocumentTree.h"

namespace nbscore::test {

inline void AppendTreeText(std::string& text, Element element) {
    if (element.IsText()) {
        text += "[" + std::string(element.GetText()) + "]";
        return;
    }
    text += "<" + std::string(element.GetSpelling()) + " " + std::to_string(element.GetLine()) + ":" +
            std::to_string(element.GetColumn());
    for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
        const Element::Attribute attribute = element.GetAttributeAt(i);
        text += " " + std::string(element.GetTree().GetSpelling(attribute.name)) + "=[" + std::string(attribute.value) +
                "]";
    }
    text += ">";
    for (const Element child : element.GetChildNodes())
        AppendTreeText(text, child);
    text += "</>";
}

/// A text that shows all that a reader can learn from a tree.
inline std::string TreeText(const DocumentTree& document) {
    std::string text;
    AppendTreeText(text, document.GetRoot());
    return text;
}

}  // namespace nbscore::test

#pragma once

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>

#include <sstream>
#include <string>
#include <vector>

#include "document/DocumentAdapter.h"
#include "framework/VeskException.h"
#include "framework/xml/ParsedDocument.h"
#include "support/XmlText.h"

namespace nbscore::test {

/// What adapting makes of a document.
struct Adapted {
    /// LINE: what was done, or LINE: not: what stays.
    std::vector<std::string> changes;
    std::string text;
};

inline Adapted Adapt(const std::string& text) {
    std::istringstream stream(text);
    const ParsedDocument document = ParseDocument(stream);
    Adapted adapted;
    for (const Adaptation& adaptation : AdaptDocument(*document))
        adapted.changes.push_back(std::to_string(adaptation.place.line) + ": " + (adaptation.isMade ? "" : "not: ") +
                                  adaptation.change);
    adapted.text = XmlTextOf(*document);
    return adapted;
}

/// "LINE: MESSAGE" of the refusal.
inline std::string GetRefusal(const std::string& text) {
    try {
        Adapt(text);
    } catch (const VeskException& refusal) {
        EXPECT_EQ(refusal.GetCode(), VeskException::InconsistentDocument);
        return std::to_string(refusal.GetPlace().line) + ": " + refusal.GetMessage();
    }
    return "adapted";
}

}  // namespace nbscore::test

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "adapt/DocumentAdapter.h"
#include "framework/VeskException.h"
#include "pmml/DomDocument.h"
#include "support/TreeOf.h"
#include "support/XmlText.h"

namespace nbscore::test {

/// What adapting makes of a document. Each that is adapted here is adapted twice, and must stay as it became.
struct Adapted {
    /// LINE: what was done, or LINE: not: what stays.
    std::vector<std::string> changes;
    std::string text;
};

inline Adapted Adapt(const std::string& text) {
    ParsedDocument document = TreeOf(text);
    Adapted adapted;
    for (const Adaptation& adaptation : AdaptDocument(document))
        adapted.changes.push_back(std::to_string(adaptation.place.line) + ": " + (adaptation.isMade ? "" : "not: ") +
                                  adaptation.change);
    adapted.text = XmlTextOf(*WriteDom(*document));
    for (const Adaptation& adaptation : AdaptDocument(document))
        EXPECT_FALSE(adaptation.isMade) << "when adapted again: " << adaptation.change;
    EXPECT_EQ(XmlTextOf(*WriteDom(*document)), adapted.text) << "when adapted again";
    return adapted;
}

/// "LINE: MESSAGE" of the refusal.
inline std::string GetRefusal(ParsedDocument& document) {
    try {
        AdaptDocument(document);
    } catch (const VeskException& refusal) {
        EXPECT_EQ(refusal.GetCode(), VeskException::InconsistentDocument);
        return std::to_string(refusal.GetPlace().line) + ": " + refusal.GetMessage();
    }
    return "adapted";
}

inline std::string GetRefusal(const std::string& text) {
    ParsedDocument document = TreeOf(text);
    std::string refusal = GetRefusal(document);
    EXPECT_EQ(GetRefusal(document), refusal) << "when adapted again";
    return refusal;
}

}  // namespace nbscore::test

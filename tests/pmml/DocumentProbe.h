#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "framework/VeskException.h"
#include "reading/PMMLTranslator.h"
#include "support/TreeOf.h"

/// A translator that builds nothing and lets a test look at the parsed document.
class DocumentProbe : public PMMLTranslator {
public:
    using Look = std::function<ScoreModel*(DocumentProbe&, xercesc::DOMDocument&)>;

    explicit DocumentProbe(Look lookAtDocument, const std::string& nameOfDocument = "")
        : PMMLTranslator(nameOfDocument), look(std::move(lookAtDocument)) {}

    using PMMLTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        return look(*this, *document);
    }
    using BaseTranslator::LeaveUnfinishedModel;

private:
    Look look;
};

/// Parses a text and runs a step on the document while it is alive.
inline void WithDocument(const std::string& text,
                         const std::function<void(DocumentProbe&, xercesc::DOMDocument&)>& step,
                         const std::string& encoding = "UTF-8") {
    DocumentProbe probe([&](DocumentProbe& self, xercesc::DOMDocument& document) -> ScoreModel* {
        step(self, document);
        return nullptr;
    });
    std::istringstream stream(text);
    probe.ParseFromTree(stream, encoding);
}

/// The refusal that a step ends in; nothing when it ends well.
inline std::optional<VeskException> RefusalOf(const std::function<void()>& step) {
    try {
        step();
    } catch (const VeskException& refusal) {
        return refusal;
    }
    return std::nullopt;
}

/// The refusal of a text by the parser itself.
inline std::optional<VeskException> RefusalOfText(const std::string& text) {
    return RefusalOf([&] { nbscore::test::TreeOf(text); });
}

/// A place as "line:column path", so that a test shows it in one piece.
inline std::string PlaceText(const nbscore::DocumentPlace& place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column) + " " + place.elementPath;
}

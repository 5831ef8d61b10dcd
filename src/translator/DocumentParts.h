#pragma once

#include <vector>

#include "framework/XmlFwd.h"

namespace nbscore {

/// What is looked for anywhere in a document, in document order.
struct DocumentParts {
    /// The first Application element; null when there is none.
    const xercesc::DOMElement* application = nullptr;
    /// Every NaiveBayesModel element.
    std::vector<const xercesc::DOMElement*> models;
};

/// Finds them in one walk: most of the time that reading a large document takes goes into walking it.
DocumentParts FindDocumentParts(const xercesc::DOMDocument& document);

}  // namespace nbscore

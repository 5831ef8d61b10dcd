#include "translator/DocumentParts.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"

namespace nbscore {

DocumentParts FindDocumentParts(const xercesc::DOMDocument& document) {
    DocumentParts parts;
    const DocumentWatch watch(document);
    for (const xercesc::DOMNode* node = &document; node != nullptr; node = NextInDocumentOrder(node)) {
        watch.Step();
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) continue;
        const auto* element = static_cast<const xercesc::DOMElement*>(node);
        if (HasName(element, element::naiveBayesModel)) parts.models.push_back(element);
        if (parts.application == nullptr && HasName(element, element::application)) parts.application = element;
    }
    return parts;
}

}  // namespace nbscore

#include "translator/ElementWalk.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/Refusal.h"

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace nbscore {

bool HasName(const DOMElement* element, const XMLCh* name) {
    return element != nullptr && xercesc::XMLString::equals(element->getNodeName(), name);
}

bool SameText(const XMLCh* text, const XMLCh* other) {
    return xercesc::XMLString::equals(text, other);
}

void RequireName(const DOMElement* element, const XMLCh* name, const DOMElement* parent,
                 VeskException::ExceptionCode code, const char* message) {
    if (!HasName(element, name)) throw RefusalAt(element != nullptr ? element : parent, code, message);
}

std::vector<const DOMElement*> DescendantsNamed(const DOMElement& ancestor, const XMLCh* name) {
    std::vector<const DOMElement*> found;
    for (const DOMNode* node = NextInDocumentOrder(&ancestor, &ancestor); node != nullptr;
         node = NextInDocumentOrder(node, &ancestor)) {
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
        const auto* element = static_cast<const DOMElement*>(node);
        if (HasName(element, name)) found.push_back(element);
    }
    return found;
}

}  // namespace nbscore

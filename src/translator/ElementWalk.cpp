#include "translator/ElementWalk.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace nbscore {

namespace {

/// The element after this one in document order, within the ancestor; null at the end.
const DOMElement* NextInDocumentOrder(const DOMElement* element, const DOMNode* ancestor) {
    if (const DOMElement* child = BaseTranslator::GetFirstChildElt(element)) return child;
    for (const DOMNode* node = element; node != ancestor; node = node->getParentNode()) {
        if (const DOMElement* sibling = BaseTranslator::GetNextSiblingElt(node)) return sibling;
    }
    return nullptr;
}

}  // namespace

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
    for (const DOMElement* element = NextInDocumentOrder(&ancestor, &ancestor); element != nullptr;
         element = NextInDocumentOrder(element, &ancestor)) {
        if (HasName(element, name)) found.push_back(element);
    }
    return found;
}

}  // namespace nbscore

#include "framework/xml/DocumentOrder.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/xml/DocumentWatch.h"

namespace nbscore {

const xercesc::DOMNode* NextInDocumentOrder(const xercesc::DOMNode* node, const xercesc::DOMNode* top) {
    if (const xercesc::DOMNode* child = node->getFirstChild()) return child;
    for (; node != nullptr && node != top; node = node->getParentNode()) {
        if (const xercesc::DOMNode* sibling = node->getNextSibling()) return sibling;
    }
    return nullptr;
}

std::vector<const xercesc::DOMElement*> DescendantsNamed(const xercesc::DOMNode& top, const XMLCh* name) {
    std::vector<const xercesc::DOMElement*> found;
    const DocumentWatch watch(top);
    for (const xercesc::DOMNode* node = NextInDocumentOrder(&top, &top); node != nullptr;
         node = NextInDocumentOrder(node, &top)) {
        watch.Step();
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) continue;
        if (!xercesc::XMLString::equals(node->getNodeName(), name)) continue;
        found.push_back(static_cast<const xercesc::DOMElement*>(node));
    }
    return found;
}

}  // namespace nbscore

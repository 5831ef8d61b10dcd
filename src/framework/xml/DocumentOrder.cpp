#include "framework/xml/DocumentOrder.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

namespace nbscore {

const xercesc::DOMNode* NextInDocumentOrder(const xercesc::DOMNode* node, const xercesc::DOMNode* top) {
    if (const xercesc::DOMNode* child = node->getFirstChild()) return child;
    while (node != nullptr && node != top && node->getNextSibling() == nullptr)
        node = node->getParentNode();
    return node == nullptr || node == top ? nullptr : node->getNextSibling();
}

std::vector<const xercesc::DOMElement*> DescendantsNamed(const xercesc::DOMNode& top, const XMLCh* name) {
    std::vector<const xercesc::DOMElement*> found;
    for (const xercesc::DOMNode* node = NextInDocumentOrder(&top, &top); node != nullptr;
         node = NextInDocumentOrder(node, &top)) {
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) continue;
        if (!xercesc::XMLString::equals(node->getNodeName(), name)) continue;
        found.push_back(static_cast<const xercesc::DOMElement*>(node));
    }
    return found;
}

}  // namespace nbscore

#include "framework/xml/DocumentOrder.h"

#include <xercesc/dom/DOMNode.hpp>

namespace nbscore {

const xercesc::DOMNode* NextInDocumentOrder(const xercesc::DOMNode* node, const xercesc::DOMNode* top) {
    if (const xercesc::DOMNode* child = node->getFirstChild()) return child;
    while (node != nullptr && node != top && node->getNextSibling() == nullptr)
        node = node->getParentNode();
    return node == nullptr || node == top ? nullptr : node->getNextSibling();
}

}  // namespace nbscore

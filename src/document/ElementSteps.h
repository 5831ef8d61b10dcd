#pragma once

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <string>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"

/// @file
/// Small steps over a document that is to be changed. Every list is made before the first change.

namespace nbscore {

using XmlText = std::basic_string<XMLCh>;

inline bool IsNamed(const xercesc::DOMNode* element, const XMLCh* name) {
    return xercesc::XMLString::equals(element->getNodeName(), name);
}

inline bool HoldsText(const XMLCh* text, const XMLCh* other) {
    return xercesc::XMLString::equals(text, other);
}

inline std::vector<xercesc::DOMElement*> ChildElements(const xercesc::DOMElement& parent) {
    std::vector<xercesc::DOMElement*> children;
    for (xercesc::DOMElement* child = BaseTranslator::GetFirstChildElt(&parent); child != nullptr;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        children.push_back(child);
    }
    return children;
}

inline std::vector<xercesc::DOMElement*> ChildrenNamed(const xercesc::DOMElement& parent, const XMLCh* name) {
    std::vector<xercesc::DOMElement*> children = ChildElements(parent);
    std::erase_if(children, [name](const xercesc::DOMElement* child) { return !IsNamed(child, name); });
    return children;
}

/// At any depth, in document order.
inline std::vector<xercesc::DOMElement*> DescendantsNamed(xercesc::DOMNode& top, const XMLCh* name) {
    std::vector<xercesc::DOMElement*> found;
    for (const xercesc::DOMNode* node = NextInDocumentOrder(&top, &top); node != nullptr;
         node = NextInDocumentOrder(node, &top)) {
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE || !IsNamed(node, name)) continue;
        // The walk takes and gives constant nodes; the document itself is the caller's to change.
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
        found.push_back(static_cast<xercesc::DOMElement*>(const_cast<xercesc::DOMNode*>(node)));
    }
    return found;
}

}  // namespace nbscore

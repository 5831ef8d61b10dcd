#include "document/ElementSteps.h"

#include <xercesc/util/XMLString.hpp>

#include <utility>

#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

using xercesc::DOMElement;

namespace nbscore {

bool IsNamed(const xercesc::DOMNode* element, const XMLCh* name) {
    return xercesc::XMLString::equals(element->getNodeName(), name);
}

bool HoldsText(const XMLCh* text, const XMLCh* other) {
    return xercesc::XMLString::equals(text, other);
}

std::vector<DOMElement*> ChildElements(const DOMElement& parent) {
    std::vector<DOMElement*> children;
    const DocumentWatch watch(parent);
    for (DOMElement* child = BaseTranslator::GetFirstChildElt(&parent); child != nullptr;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        watch.Step();
        children.push_back(child);
    }
    return children;
}

std::vector<DOMElement*> ChildrenNamed(const DOMElement& parent, const XMLCh* name) {
    std::vector<DOMElement*> children = ChildElements(parent);
    std::erase_if(children, [name](const DOMElement* child) { return !IsNamed(child, name); });
    return children;
}

const DOMElement* OnlyChildNamed(const DOMElement& parent, const XMLCh* name) {
    const std::vector<DOMElement*> children = ChildrenNamed(parent, name);
    if (children.size() < 2) return children.empty() ? nullptr : children.front();
    throw RefusalAt(children[1], VeskException::InconsistentDocument,
                    "There may be only one <" + Utf8Of(name) + "> in a <" + Utf8Of(parent.getNodeName()) + ">.");
}

std::vector<DOMElement*> DescendantsNamed(xercesc::DOMNode& top, const XMLCh* name) {
    std::vector<DOMElement*> found;
    // The walk takes and gives constant nodes; the document itself is the caller's to change.
    for (const DOMElement* element : DescendantsNamed(std::as_const(top), name)) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
        found.push_back(const_cast<DOMElement*>(element));
    }
    return found;
}

std::string AttributeOr(const DOMElement& element, const XMLCh* name, const std::string& absent) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&element, name);
    return text == nullptr ? absent : Utf8Of(text);
}

double NumberAttributeOr(const DOMElement& element, const XMLCh* name, double absent) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&element, name);
    return text == nullptr ? absent : DoubleAt(&element, text);
}

}  // namespace nbscore

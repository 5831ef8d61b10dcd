#include "translator/ElementWalk.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/xml/Refusal.h"

using xercesc::DOMElement;

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

}  // namespace nbscore

#include "document/ElementChildren.h"

#include <xercesc/dom/DOMElement.hpp>

#include <vector>

#include "document/ElementSteps.h"
#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

using xercesc::DOMElement;

namespace nbscore {

const XMLCh* WithoutPrefix(const XMLCh* name) {
    const XMLCh* local = name;
    for (const XMLCh* unit = name; *unit != 0; ++unit) {
        if (*unit == u':') local = unit + 1;
    }
    return local;
}

std::string WithoutPrefix(const std::string& name) {
    return name.substr(name.rfind(':') + 1);
}

const DOMElement* OnlyChildNamed(const DOMElement& parent, const XMLCh* name) {
    const std::vector<DOMElement*> children = ChildrenNamed(parent, name);
    if (children.size() < 2) return children.empty() ? nullptr : children.front();
    throw RefusalAt(children[1], VeskException::InconsistentDocument,
                    "There may be only one <" + Utf8Of(name) + "> in a <" + Utf8Of(parent.getNodeName()) + ">.");
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

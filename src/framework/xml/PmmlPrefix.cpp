#include "framework/xml/PmmlPrefix.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/util/XMLString.hpp>

#include <string>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::XMLString;
using XmlText = std::basic_string<XMLCh>;

constexpr XmlName pmmlNamespace{"http://www.dmg.org/PMML-"};

/// The attribute that binds a prefix, given with its colon.
XmlText DeclarationOf(const XmlText& prefix) {
    constexpr XmlName declaration{"xmlns:"};
    return declaration.text + prefix.substr(0, prefix.size() - 1);
}

/// Whether an element gives the prefix another meaning than PMML, for itself and all that is in it.
bool BindsToOther(const DOMElement& element, const XmlText& declaration) {
    const XMLCh* boundTo = BaseTranslator::GetAttribute(&element, declaration.c_str());
    return boundTo != nullptr && !XMLString::startsWith(boundTo, pmmlNamespace);
}

/// The node behind all that is in this one.
const DOMNode* NextBehind(const DOMNode* node) {
    while (node->getLastChild() != nullptr)
        node = node->getLastChild();
    return NextInDocumentOrder(node);
}

/// The root's prefix with its colon; empty when it has none or binds it to something else than PMML.
XmlText FindPrefix(const DOMElement& root) {
    const XMLCh* const name = root.getNodeName();
    const XmlText prefix(name, WithoutPrefix(name));
    if (prefix.empty()) return prefix;
    const XMLCh* boundTo = BaseTranslator::GetAttribute(&root, DeclarationOf(prefix).c_str());
    const bool isPmml = boundTo != nullptr && XMLString::startsWith(boundTo, pmmlNamespace);
    return isPmml ? prefix : XmlText();
}

}  // namespace

void DropPmmlPrefix(xercesc::DOMDocument& document) {
    const DOMElement* root = document.getDocumentElement();
    const XmlText prefix = root == nullptr ? XmlText() : FindPrefix(*root);
    if (prefix.empty()) return;
    const XmlText declaration = DeclarationOf(prefix);
    const DOMNode* behindForeign = nullptr;
    bool inForeign = false;
    const DocumentWatch watch(document);
    for (const DOMNode* node = root; node != nullptr; node = NextInDocumentOrder(node)) {
        watch.Step();
        if (inForeign && node == behindForeign) inForeign = false;
        if (inForeign || node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
        if (BindsToOther(*static_cast<const DOMElement*>(node), declaration)) {
            inForeign = true;
            behindForeign = NextBehind(node);
            continue;
        }
        if (!XMLString::startsWith(node->getNodeName(), prefix.c_str())) continue;
        // The walk takes and gives constant nodes; the document itself is the caller's to change.
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
        auto* const element = static_cast<xercesc::DOMElementImpl*>(const_cast<DOMNode*>(node));
        // The rest of the kept name: renaming would look it up in a table that never grows.
        element->fName += prefix.size();
    }
}

}  // namespace nbscore

#include "framework/xml/PmmlPrefix.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <string>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::XMLString;
using XmlText = std::basic_string<XMLCh>;

constexpr XMLCh colon = 0x3A;

/// The root's prefix with its colon; empty when it has none or binds it to something else than PMML.
XmlText FindPrefix(const DOMElement& root) {
    const XmlText name = root.getNodeName();
    const std::size_t end = name.find(colon);
    if (end == XmlText::npos) return XmlText();
    const XmlText prefix = name.substr(0, end + 1);
    constexpr XmlName declaration{"xmlns:"};
    const XmlText attributeName = declaration.text + prefix.substr(0, end);
    const XMLCh* boundTo = BaseTranslator::GetAttribute(&root, attributeName.c_str());
    constexpr XmlName pmmlNamespace{"http://www.dmg.org/PMML-"};
    const bool isPmml = boundTo != nullptr && XMLString::startsWith(boundTo, pmmlNamespace);
    return isPmml ? prefix : XmlText();
}

}  // namespace

void DropPmmlPrefix(xercesc::DOMDocument& document) {
    const DOMElement* root = document.getDocumentElement();
    const XmlText prefix = root == nullptr ? XmlText() : FindPrefix(*root);
    if (prefix.empty()) return;
    for (const DOMNode* node = root; node != nullptr; node = NextInDocumentOrder(node)) {
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
        if (!XMLString::startsWith(node->getNodeName(), prefix.c_str())) continue;
        // The walk takes and gives constant nodes; the document itself is the caller's to change.
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
        document.renameNode(const_cast<DOMNode*>(node), nullptr, node->getNodeName() + prefix.size());
    }
}

}  // namespace nbscore

#include "reading/BaseTranslator.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/VeskException.h"
#include "pmml/DomDocument.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "reading/DocumentFaults.h"

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

/// The node itself or the nearest sibling behind it that is an element.
DOMElement* ThisOrNextElement(DOMNode* node) {
    while (node && node->getNodeType() != DOMNode::ELEMENT_NODE)
        node = node->getNextSibling();
    return static_cast<DOMElement*>(node);
}

/// How messages name an element, or of the document where that is null.
std::string TagOf(const DOMNode* node) {
    if (!node || node->getNodeType() == DOMNode::DOCUMENT_NODE) return "The document";
    return "<" + nbscore::ExcerptOf(nbscore::Utf8Of(node->getNodeName())) + ">";
}

}  // namespace

DocumentFaults::~DocumentFaults() = default;

DOMElement* BaseTranslator::GetChildByTag(const DOMNode* node, const XMLCh* tag) {
    for (DOMElement* child = GetFirstChildElt(node); child; child = GetNextSiblingElt(child)) {
        if (xercesc::XMLString::equals(child->getNodeName(), tag)) return child;
    }
    return nullptr;
}

DOMElement* BaseTranslator::GetChildByTagForced(const DOMNode* node, const XMLCh* tag) {
    if (DOMElement* child = GetChildByTag(node, tag)) return child;
    throw nbscore::RefusalAt(node, nbscore::Refusal::ChildMissing,
                             {TagOf(node), nbscore::ExcerptOf(nbscore::Utf8Of(tag))});
}

DOMElement* BaseTranslator::GetFirstChildElt(const DOMNode* node) {
    return node ? ThisOrNextElement(node->getFirstChild()) : nullptr;
}

DOMElement* BaseTranslator::GetNextSiblingElt(const DOMNode* node) {
    return node ? ThisOrNextElement(node->getNextSibling()) : nullptr;
}

const XMLCh* BaseTranslator::GetAttribute(const DOMElement* element, const XMLCh* name) {
    const xercesc::DOMAttr* attribute = element ? element->getAttributeNode(name) : nullptr;
    return attribute ? attribute->getValue() : nullptr;
}

const XMLCh* BaseTranslator::GetAttributeForced(const DOMElement* element, const XMLCh* name) {
    if (const XMLCh* value = GetAttribute(element, name)) return value;
    throw nbscore::RefusalAt(element, nbscore::Refusal::AttributeMissing,
                             {TagOf(element), nbscore::ExcerptOf(nbscore::Utf8Of(name))});
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const xercesc::DOMDocument* document, const XMLCh* tag) {
    return document->getElementsByTagName(tag);
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const DOMElement* element, const XMLCh* tag) {
    return element->getElementsByTagName(tag);
}

bool BaseTranslator::IsEqual(const XMLCh* xmlText, const std::string& text) {
    const std::string utf8 = nbscore::Utf8Of(xmlText);
    return utf8 == text && !nbscore::HasHalfPair(utf8);
}

bool BaseTranslator::IsEqual(const Transcoder& transcoder, const XMLCh* xmlText, const std::string& text) {
    return transcoder.transcodeTo(xmlText) == text;
}

int BaseTranslator::VerifyInt(const XMLCh* xmlText) {
    return nbscore::IntOf(nbscore::Utf8Of(xmlText));
}

double BaseTranslator::VerifyDouble(const XMLCh* xmlText) {
    return nbscore::DoubleOf(nbscore::Utf8Of(xmlText));
}

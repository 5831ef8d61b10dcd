#include "framework/BaseTranslator.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/util/XMLString.hpp>

#include "framework/NumberText.h"
#include "framework/VeskException.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;

/// The node itself or the nearest sibling behind it that is an element.
DOMElement* ThisOrNextElement(DOMNode* node) {
    while (node && node->getNodeType() != DOMNode::ELEMENT_NODE)
        node = node->getNextSibling();
    return static_cast<DOMElement*>(node);
}

VeskException NotANumber(const XMLCh* xmlText, const std::string& kind) {
    return {VeskException::InvalidNumber, "\"" + nbscore::ExcerptOf(xmlText) + "\" is no " + kind + "."};
}

}  // namespace

DOMElement* BaseTranslator::GetChildByTag(const DOMNode* node, const XMLCh* tag) {
    for (DOMElement* child = GetFirstChildElt(node); child; child = GetNextSiblingElt(child)) {
        if (xercesc::XMLString::equals(child->getNodeName(), tag)) return child;
    }
    return nullptr;
}

DOMElement* BaseTranslator::GetChildByTagForced(const DOMNode* node, const XMLCh* tag) {
    if (DOMElement* child = GetChildByTag(node, tag)) return child;
    throw nbscore::RefusalAt(node, VeskException::UnexpectedElement,
                             nbscore::NameForMessage(node) + " has no child <" + nbscore::ExcerptOf(tag) + ">.");
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
    return nbscore::Placed(element, [&]() -> const XMLCh* { throw nbscore::AttributeLacking(element, name); });
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const xercesc::DOMDocument* document, const XMLCh* tag) {
    return document->getElementsByTagName(tag);
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const DOMElement* element, const XMLCh* tag) {
    return element->getElementsByTagName(tag);
}

bool BaseTranslator::IsEqual(const XMLCh* xmlText, const std::string& text) {
    return nbscore::EqualsUtf8(xmlText, text);
}

bool BaseTranslator::IsEqual(const Transcoder& transcoder, const XMLCh* xmlText, const std::string& text) {
    return transcoder.transcodeTo(xmlText) == text;
}

int BaseTranslator::VerifyInt(const XMLCh* xmlText) {
    if (const auto number = nbscore::ReadInt(nbscore::Utf8Of(xmlText))) return *number;
    throw NotANumber(xmlText, "whole number of 32 bits");
}

double BaseTranslator::VerifyDouble(const XMLCh* xmlText) {
    if (const auto number = nbscore::ReadNumber(nbscore::Utf8Of(xmlText))) return *number;
    throw NotANumber(xmlText, "number");
}

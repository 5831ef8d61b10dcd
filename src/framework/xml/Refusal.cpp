#include "framework/xml/Refusal.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <optional>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/ElementPaths.h"
#include "framework/xml/ElementPlaces.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

using xercesc::DOMNode;

bool IsElement(const DOMNode* node) {
    return node->getNodeType() == DOMNode::ELEMENT_NODE;
}

/// The element that a node belongs to; of a document its root element.
const xercesc::DOMElement* ElementOf(const DOMNode* node) {
    if (!node) return nullptr;
    if (node->getNodeType() == DOMNode::DOCUMENT_NODE) {
        return static_cast<const xercesc::DOMDocument*>(node)->getDocumentElement();
    }
    if (node->getNodeType() == DOMNode::ATTRIBUTE_NODE) {
        return static_cast<const xercesc::DOMAttr*>(node)->getOwnerElement();
    }
    while (node && !IsElement(node))
        node = node->getParentNode();
    return static_cast<const xercesc::DOMElement*>(node);
}

/// How many elements stand before this one in the document; nothing when it does not hang in the document.
std::optional<std::size_t> OrdinalOf(const DOMNode* element, const xercesc::DOMDocument* document) {
    std::size_t ordinal = 0;
    const DocumentWatch watch(*document);
    for (const DOMNode* node = document; node; node = NextInDocumentOrder(node)) {
        watch.Step();
        if (node == element) return ordinal;
        if (IsElement(node)) ++ordinal;
    }
    return std::nullopt;
}

}  // namespace

DocumentPlace PlaceOf(const xercesc::DOMNode* node) {
    DocumentPlace place;
    const xercesc::DOMElement* element = ElementOf(node);
    if (!element) return place;
    place.elementPath = ElementPaths().Find(*element);
    const xercesc::DOMDocument* document = element->getOwnerDocument();
    const ElementPlaces* places = document ? ElementPlaces::Find(document) : nullptr;
    if (!places) return place;
    if (const auto ordinal = OrdinalOf(element, document)) {
        const ElementPlaces::Mark mark = places->Get(*ordinal);
        place.line = mark.line;
        place.column = mark.column;
    }
    return place;
}

VeskException RefusalAt(const xercesc::DOMNode* node, VeskException::ExceptionCode code, const std::string& message) {
    VeskException refusal(code, message);
    refusal.SetPlace(PlaceOf(node));
    return refusal;
}

std::string NameForMessage(const DOMNode* node) {
    if (!node || node->getNodeType() == DOMNode::DOCUMENT_NODE) return "The document";
    return "<" + ExcerptOf(node->getNodeName()) + ">";
}

VeskException AttributeLacking(const xercesc::DOMElement* element, const XMLCh* name) {
    return {VeskException::MissingAttribute,
            NameForMessage(element) + " has no attribute \"" + ExcerptOf(name) + "\"."};
}

double RequiredDouble(const xercesc::DOMElement* element, const XMLCh* name) {
    return DoubleAt(element, BaseTranslator::GetAttributeForced(element, name));
}

double DoubleAt(const xercesc::DOMElement* element, const XMLCh* text) {
    return Placed(element, [&] { return BaseTranslator::VerifyDouble(text); });
}

int IntAt(const xercesc::DOMElement* element, const XMLCh* text) {
    return Placed(element, [&] { return BaseTranslator::VerifyInt(text); });
}

std::string TextAt(const xercesc::DOMElement* element, const XMLCh* text, const Transcoder& transcoder) {
    return Placed(element, [&] { return transcoder.transcodeTo(text); });
}

}  // namespace nbscore

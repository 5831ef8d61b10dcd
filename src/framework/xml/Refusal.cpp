#include "framework/xml/Refusal.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <optional>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"
#include "framework/xml/ElementPlaces.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

using xercesc::DOMNode;

bool IsElement(const DOMNode* node) {
    return node->getNodeType() == DOMNode::ELEMENT_NODE;
}

/// The element that a node belongs to; of a document its root element.
const DOMNode* ElementOf(const DOMNode* node) {
    if (!node) return nullptr;
    if (node->getNodeType() == DOMNode::DOCUMENT_NODE) {
        return static_cast<const xercesc::DOMDocument*>(node)->getDocumentElement();
    }
    if (node->getNodeType() == DOMNode::ATTRIBUTE_NODE) {
        return static_cast<const xercesc::DOMAttr*>(node)->getOwnerElement();
    }
    while (node && !IsElement(node))
        node = node->getParentNode();
    return node;
}

/// How many elements stand before this one in the document; nothing when it does not hang in the document.
std::optional<std::size_t> OrdinalOf(const DOMNode* element, const xercesc::DOMDocument* document) {
    std::size_t ordinal = 0;
    for (const DOMNode* node = document; node; node = NextInDocumentOrder(node)) {
        if (node == element) return ordinal;
        if (IsElement(node)) ++ordinal;
    }
    return std::nullopt;
}

std::size_t PositionAmongNamesakes(const DOMNode* element) {
    std::size_t position = 1;
    for (const DOMNode* node = element->getPreviousSibling(); node; node = node->getPreviousSibling()) {
        if (IsElement(node) && xercesc::XMLString::equals(node->getNodeName(), element->getNodeName())) ++position;
    }
    return position;
}

/// Runs a conversion that knows no place and gives its complaint one.
template <typename Conversion>
auto Placed(const DOMNode* node, const Conversion& conversion) {
    try {
        return conversion();
    } catch (VeskException& refusal) {
        refusal.SetPlace(PlaceOf(node));
        throw;
    }
}

}  // namespace

std::string ElementPathOf(const DOMNode* element) {
    std::vector<const DOMNode*> ancestry;
    for (; element && IsElement(element); element = element->getParentNode())
        ancestry.push_back(element);
    std::string path;
    for (auto step = ancestry.rbegin(); step != ancestry.rend(); ++step) {
        path += "/" + Utf8Of((*step)->getNodeName());
        const bool isRoot = step == ancestry.rbegin();
        if (!isRoot) path += "[" + std::to_string(PositionAmongNamesakes(*step)) + "]";
    }
    return path;
}

DocumentPlace PlaceOf(const xercesc::DOMNode* node) {
    DocumentPlace place;
    const DOMNode* element = ElementOf(node);
    if (!element) return place;
    place.elementPath = ElementPathOf(element);
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

#include "framework/xml/PlacesInOrder.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>

#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/ElementPlaces.h"

namespace nbscore {

PlacesInOrder::PlacesInOrder(const xercesc::DOMDocument& walkedDocument)
    : document(walkedDocument), node(&walkedDocument) {}

PlacesInOrder::LineAndColumn PlacesInOrder::Find(const xercesc::DOMElement& element) {
    const DocumentWatch watch(document);
    while (node != nullptr && node != &element) {
        watch.Step();
        if (node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) ++ordinal;
        node = NextInDocumentOrder(node);
    }
    const ElementPlaces* const places = node == nullptr ? nullptr : ElementPlaces::Find(&document);
    if (places == nullptr) return {};
    const ElementPlaces::Mark mark = places->Get(static_cast<std::size_t>(ordinal));
    return {mark.line, mark.column};
}

}  // namespace nbscore

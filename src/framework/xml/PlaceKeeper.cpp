#include "framework/xml/PlaceKeeper.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include "framework/xml/DocumentOrder.h"
#include "framework/xml/DocumentWatch.h"

namespace nbscore {
namespace {

using xercesc::DOMNode;

bool IsElement(const DOMNode* node) {
    return node->getNodeType() == DOMNode::ELEMENT_NODE;
}

}  // namespace

PlaceKeeper::PlaceKeeper(xercesc::DOMDocument& changingDocument) : document(changingDocument) {
    const ElementPlaces* places = ElementPlaces::Find(&document);
    if (places == nullptr) return;
    std::size_t ordinal = 0;
    const DocumentWatch watch(document);
    for (const DOMNode* node = &document; node != nullptr; node = NextInDocumentOrder(node)) {
        watch.Step();
        if (IsElement(node)) marks.emplace_back(node, places->Get(ordinal++));
    }
    std::ranges::sort(marks, std::less(), [](const auto& entry) { return entry.first; });
}

PlaceKeeper::~PlaceKeeper() = default;

void PlaceKeeper::Settle() {
    if (ElementPlaces::Find(&document) == nullptr) return;
    auto settled = std::make_unique<ElementPlaces>();
    const DocumentWatch watch(document);
    for (const DOMNode* node = &document; node != nullptr; node = NextInDocumentOrder(node)) {
        watch.Step();
        if (IsElement(node)) settled->Add(MarkOf(node));
    }
    ElementPlaces::Attach(&document, std::move(settled));
}

ElementPlaces::Mark PlaceKeeper::MarkOf(const DOMNode* element) const {
    for (const DOMNode* node = element; node != nullptr; node = node->getParentNode()) {
        const auto found =
            std::ranges::lower_bound(marks, node, std::less(), [](const auto& entry) { return entry.first; });
        if (found != marks.end() && found->first == node) return found->second;
    }
    return {};
}

}  // namespace nbscore

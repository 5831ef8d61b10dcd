#include "pmml/DomDocument.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "pmml/TreeBuilder.h"
#include "pmml/Utf8.h"
#include "pmml/XmlServices.h"

namespace nbscore {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

bool IsElement(const DOMNode& node) {
    return node.getNodeType() == DOMNode::ELEMENT_NODE;
}
bool IsText(const DOMNode& node) {
    return node.getNodeType() == DOMNode::TEXT_NODE || node.getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

std::string NameOf(const DOMNode& node) {
    return WithoutHalfPairs(Utf8Of(node.getNodeName()));
}

/// The node and the elements around it, the outermost first.
std::vector<const DOMNode*> AncestryOf(const DOMNode* node) {
    std::vector<const DOMNode*> ancestry;
    for (; node != nullptr && IsElement(*node); node = node->getParentNode())
        ancestry.push_back(node);
    std::ranges::reverse(ancestry);
    return ancestry;
}

std::string PathOf(const std::vector<const DOMNode*>& ancestry) {
    std::string path;
    for (const DOMNode* step : ancestry) {
        path += "/" + NameOf(*step);
        if (step == ancestry.front()) continue;
        std::size_t position = 1;
        for (const DOMNode* elder = step->getPreviousSibling(); elder != nullptr; elder = elder->getPreviousSibling()) {
            if (IsElement(*elder) && xercesc::XMLString::equals(elder->getNodeName(), step->getNodeName())) ++position;
        }
        path += "[" + std::to_string(position) + "]";
    }
    return path;
}

/// The element of the tree that a DOM was written from; none where the DOM was not, or has changed there.
Element OriginOf(const std::vector<const DOMNode*>& ancestry) {
    if (ancestry.empty()) return {};
    const DOMDocument* const document = ancestry.front()->getOwnerDocument();
    const DocumentTree* const tree = GetXmlServices().FindTree(document);
    if (tree == nullptr || ancestry.front()->getParentNode() != document) return {};
    Element origin = tree->GetRoot();
    for (const DOMNode* step : ancestry) {
        if (step != ancestry.front()) {
            origin = origin.GetFirstChild();
            for (const DOMNode* elder = step->getPreviousSibling(); elder; elder = elder->getPreviousSibling()) {
                if (IsElement(*elder)) origin = origin.GetNextSibling();
            }
        }
        if (origin.GetSpelling() != NameOf(*step)) return {};
    }
    return origin;
}

/// Walks over a DOM once, whatever its depth.
class DomReader {
public:
    explicit DomReader(const Limits& limits)
        : builder(limits, std::make_shared<DocumentMemory>(limits)), watch(limits) {}

    ParsedDocument Read(const DOMNode* top) {
        const std::vector<const DOMNode*> ancestry = AncestryOf(top);
        builder.SetPathOfRoot(PathOf(ancestry));
        if (const Element origin = OriginOf(ancestry)) nextOrigins = {origin};
        const DOMNode* node = top;
        while (node != nullptr) {
            watch.Step();
            const DOMNode* next = Begin(*node) ? node->getFirstChild() : nullptr;
            for (; next == nullptr; node = node->getParentNode()) {
                End(*node);
                if (node == top) return builder.Finish();
                next = node->getNextSibling();
                if (next != nullptr) break;
            }
            node = next;
        }
        return builder.Finish();
    }

private:
    /// True for a node whose children are to be read.
    bool Begin(const DOMNode& node) {
        if (IsText(node)) builder.AddText(Utf8Of(node.getNodeValue()));
        if (!IsElement(node)) return false;
        const std::string name = NameOf(node);
        const Element origin = nextOrigins.empty() ? Element() : nextOrigins.back();
        const bool isKnown = origin.GetSpelling() == name;
        builder.BeginElement(builder.FindOrAddName(name), isKnown ? origin.GetLine() : 0,
                             isKnown ? origin.GetColumn() : 0);
        if (!nextOrigins.empty()) {
            nextOrigins.back() = origin.GetNextSibling();
            nextOrigins.push_back(origin.GetFirstChild());
        }
        const xercesc::DOMNamedNodeMap& attributes = *node.getAttributes();
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            const DOMNode& attribute = *attributes.item(i);
            builder.AddAttribute(builder.FindOrAddName(NameOf(attribute)), Utf8Of(attribute.getNodeValue()));
        }
        return true;
    }

    void End(const DOMNode& node) {
        if (!IsElement(node)) return;
        builder.EndElement();
        if (!nextOrigins.empty()) nextOrigins.pop_back();
    }

    TreeBuilder builder;
    LimitWatch watch;
    /// For each open element, and around them, the element of the original that the next one comes from; empty where
    /// there is no original.
    std::vector<Element> nextOrigins;
};

}  // namespace

void DomReleaser::operator()(DOMDocument* document) const {
    document->release();
}

DomDocument WriteDom(const DocumentTree& tree) {
    return GetXmlServices().WriteDom(tree);
}

ParsedDocument ReadDom(const DOMDocument& document, const Limits& limits) {
    return DomReader(limits).Read(document.getDocumentElement());
}

ParsedDocument ReadDom(const DOMNode& element, const Limits& limits) {
    return DomReader(limits).Read(&element);
}

ParsedDocument ReadDom(const DOMElement& element, const Limits& limits) {
    return DomReader(limits).Read(&element);
}

DocumentPlace PlaceOf(const DOMNode* node) {
    if (node == nullptr) return {};
    if (node->getNodeType() == DOMNode::DOCUMENT_NODE) {
        return PlaceOf(static_cast<const DOMDocument*>(node)->getDocumentElement());
    }
    if (node->getNodeType() == DOMNode::ATTRIBUTE_NODE) {
        return PlaceOf(static_cast<const xercesc::DOMAttr*>(node)->getOwnerElement());
    }
    while (node != nullptr && !IsElement(*node))
        node = node->getParentNode();
    const std::vector<const DOMNode*> ancestry = AncestryOf(node);
    const Element origin = OriginOf(ancestry);
    return {.source = {}, .line = origin.GetLine(), .column = origin.GetColumn(), .elementPath = PathOf(ancestry)};
}

VeskException RefusalAt(const DOMNode* node, Refusal id, std::initializer_list<std::string_view> arguments) {
    VeskException refusal = MakeRefusal(id, arguments);
    refusal.SetPlace(PlaceOf(node));
    return refusal;
}

}  // namespace nbscore

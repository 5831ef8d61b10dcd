#include "xml/DomWriter.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMText.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>

#include <memory>

#include "pmml/DocumentMemory.h"
#include "pmml/Utf8.h"
#include "xml/XmlLibrary.h"

namespace nbscore {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;

/// The memory of a DOM that was written from a tree.
class DomMemory : public XmlMemory {
public:
    using XmlMemory::XmlMemory;

    /// Null in a copy of the DOM, which shares the memory.
    const DocumentTree* GetTreeOf(const DOMDocument& asked) const { return &asked == document ? tree : nullptr; }

    void Set(const DOMDocument& writtenDocument, const DocumentTree& itsTree) {
        document = &writtenDocument;
        tree = &itsTree;
    }

private:
    const DOMDocument* document = nullptr;
    const DocumentTree* tree = nullptr;
};

void AddAttributes(const Element& element, DOMElement& node) {
    for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
        const Element::Attribute attribute = element.GetAttributeAt(i);
        node.setAttribute(Utf16Of(element.GetTree().GetSpelling(attribute.name)).c_str(),
                          Utf16Of(attribute.value).c_str());
    }
}

void AddContent(Element element, DOMElement& node, DOMDocument& document) {
    for (const Element child : element.GetChildNodes()) {
        if (child.IsText()) {
            node.appendChild(document.createTextNode(Utf16Of(child.GetText()).c_str()));
            continue;
        }
        DOMElement* const childNode = document.createElement(Utf16Of(child.GetSpelling()).c_str());
        node.appendChild(childNode);
        AddAttributes(child, *childNode);
        AddContent(child, *childNode, document);  // no deeper than DocumentLimits has it
    }
}

}  // namespace

DomDocument WriteDomOf(const DocumentTree& tree) {
    const auto documentMemory = std::make_shared<DocumentMemory>(tree.GetWatch().GetLimits());
    documentMemory->Take(tree.GetMemory());
    const auto memory = std::make_shared<DomMemory>(documentMemory);
    auto* const library = xercesc::DOMImplementation::getImplementation();
    DomDocument document(library->createDocument(memory.get()), DomReleaser{memory});
    if (const Element root = tree.GetRoot()) {
        DOMElement* const node = document->createElement(Utf16Of(root.GetSpelling()).c_str());
        document->appendChild(node);
        AddAttributes(root, *node);
        AddContent(root, *node, *document);
    }
    memory->Set(*document, tree);
    return document;
}

const DocumentTree* FindTreeOf(const DOMDocument* document) {
    const auto* const ofTheLibrary = dynamic_cast<const xercesc::DOMDocumentImpl*>(document);
    if (ofTheLibrary == nullptr) return nullptr;
    const auto* const memory = dynamic_cast<const DomMemory*>(ofTheLibrary->getMemoryManager());
    return memory == nullptr ? nullptr : memory->GetTreeOf(*document);
}

}  // namespace nbscore

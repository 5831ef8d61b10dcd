#include "framework/xml/DocumentWatch.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>

#include "framework/xml/XmlMemory.h"

namespace nbscore {
namespace {

XmlMemory* FindMemory(const xercesc::DOMDocument* document) {
    const auto* const ofTheLibrary = dynamic_cast<const xercesc::DOMDocumentImpl*>(document);
    return ofTheLibrary == nullptr ? nullptr : dynamic_cast<XmlMemory*>(ofTheLibrary->getMemoryManager());
}

LimitWatch* FindWatch(const xercesc::DOMNode& node) {
    const bool isDocument = node.getNodeType() == xercesc::DOMNode::DOCUMENT_NODE;
    XmlMemory* const memory =
        FindMemory(isDocument ? static_cast<const xercesc::DOMDocument*>(&node) : node.getOwnerDocument());
    return memory == nullptr ? nullptr : &memory->GetWatch();
}

}  // namespace

DocumentWatch::DocumentWatch(const xercesc::DOMNode& node) : watch(FindWatch(node)) {}

std::uint64_t MemoryOf(const xercesc::DOMDocument& document) {
    const XmlMemory* const memory = FindMemory(&document);
    return memory == nullptr ? 0 : memory->GetBytes();
}

}  // namespace nbscore

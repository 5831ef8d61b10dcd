#include "framework/xml/CompactAttribute.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>

#include <utility>

namespace nbscore {

using xercesc::DOMNode;

/// What the parser calls, once, for a new attribute.
void CompactAttribute::setValueFast(const XMLCh* value) {
    plainValue = static_cast<xercesc::DOMDocumentImpl*>(getOwnerDocument())->cloneString(value);
}

void CompactAttribute::setValue(const XMLCh* value) {
    MakeTextNode();
    DOMAttrImpl::setValue(value);
}

void CompactAttribute::MakeTextNode() const {
    const XMLCh* const value = std::exchange(plainValue, nullptr);
    // To the world outside nothing changes: the node is there as soon as anybody can tell.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
    if (value != nullptr) const_cast<CompactAttribute*>(this)->DOMAttrImpl::setValueFast(value);
}

DOMNode* CompactAttribute::appendChild(DOMNode* newChild) {
    MakeTextNode();
    return DOMAttrImpl::appendChild(newChild);
}

DOMNode* CompactAttribute::cloneNode(bool deep) const {
    MakeTextNode();
    return DOMAttrImpl::cloneNode(deep);
}

xercesc::DOMNodeList* CompactAttribute::getChildNodes() const {
    MakeTextNode();
    return DOMAttrImpl::getChildNodes();
}

DOMNode* CompactAttribute::getFirstChild() const {
    MakeTextNode();
    return DOMAttrImpl::getFirstChild();
}

DOMNode* CompactAttribute::getLastChild() const {
    MakeTextNode();
    return DOMAttrImpl::getLastChild();
}

bool CompactAttribute::hasChildNodes() const {
    MakeTextNode();
    return DOMAttrImpl::hasChildNodes();
}

DOMNode* CompactAttribute::insertBefore(DOMNode* newChild, DOMNode* refChild) {
    MakeTextNode();
    return DOMAttrImpl::insertBefore(newChild, refChild);
}

bool CompactAttribute::isEqualNode(const DOMNode* other) const {
    MakeTextNode();
    return DOMAttrImpl::isEqualNode(other);
}

void CompactAttribute::normalize() {
    MakeTextNode();
    DOMAttrImpl::normalize();
}

DOMNode* CompactAttribute::removeChild(DOMNode* oldChild) {
    MakeTextNode();
    return DOMAttrImpl::removeChild(oldChild);
}

DOMNode* CompactAttribute::rename(const XMLCh* namespaceUri, const XMLCh* newName) {
    MakeTextNode();
    return DOMAttrImpl::rename(namespaceUri, newName);
}

DOMNode* CompactAttribute::replaceChild(DOMNode* newChild, DOMNode* oldChild) {
    MakeTextNode();
    return DOMAttrImpl::replaceChild(newChild, oldChild);
}

void CompactAttribute::setTextContent(const XMLCh* text) {
    MakeTextNode();
    DOMAttrImpl::setTextContent(text);
}

xercesc::DOMParentNode* CompactAttribute::getParentNodeImpl() {
    MakeTextNode();
    return DOMAttrImpl::getParentNodeImpl();
}

const xercesc::DOMParentNode* CompactAttribute::getParentNodeImpl() const {
    MakeTextNode();
    return DOMAttrImpl::getParentNodeImpl();
}

#ifdef _WIN32

void CompactAttribute::addAttrToIDNodeMap() {
    throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR);
}

#endif

}  // namespace nbscore

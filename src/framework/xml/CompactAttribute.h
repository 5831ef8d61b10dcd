#pragma once

#include <xercesc/dom/impl/DOMAttrImpl.hpp>

namespace nbscore {

/// An attribute that holds its value as a plain text in the document's memory. The library's own one holds a text node,
/// which takes more than everything else about it, and a PMML document is little else than attributes.
///
/// Whoever wants to see or change that node gets it: it is made when it is first asked for, and from then on the
/// attribute is as the library has it. Used by one thread at a time, as every DOM is.
class CompactAttribute : public xercesc::DOMAttrImpl {
public:
    CompactAttribute(xercesc::DOMDocument* document, const XMLCh* attributeName)
        : DOMAttrImpl(document, attributeName) {}

    void setValueFast(const XMLCh* value) override;
    const XMLCh* getValue() const override { return plainValue != nullptr ? plainValue : DOMAttrImpl::getValue(); }
    void setValue(const XMLCh* value) override;

    xercesc::DOMNode* appendChild(xercesc::DOMNode* newChild) override;
    xercesc::DOMNode* cloneNode(bool deep) const override;
    xercesc::DOMNodeList* getChildNodes() const override;
    xercesc::DOMNode* getFirstChild() const override;
    xercesc::DOMNode* getLastChild() const override;
    bool hasChildNodes() const override;
    xercesc::DOMNode* insertBefore(xercesc::DOMNode* newChild, xercesc::DOMNode* refChild) override;
    bool isEqualNode(const xercesc::DOMNode* other) const override;
    void normalize() override;
    xercesc::DOMNode* removeChild(xercesc::DOMNode* oldChild) override;
    xercesc::DOMNode* rename(const XMLCh* namespaceUri, const XMLCh* newName) override;
    xercesc::DOMNode* replaceChild(xercesc::DOMNode* newChild, xercesc::DOMNode* oldChild) override;
    void setTextContent(const XMLCh* text) override;

    xercesc::DOMParentNode* getParentNodeImpl() override;
    const xercesc::DOMParentNode* getParentNodeImpl() const override;

#ifdef _WIN32
    // The library's own two lean on a class that its DLL keeps to itself. Only a document type or a schema makes an
    // attribute an identifier, and documents have neither; whoever asks for one is told that there is none.
    void addAttrToIDNodeMap() override;
    void removeAttrFromIDNodeMap() override {}
#endif

private:
    void MakeTextNode() const;

    /// Null once there is a text node.
    mutable const XMLCh* plainValue = nullptr;
};

}  // namespace nbscore

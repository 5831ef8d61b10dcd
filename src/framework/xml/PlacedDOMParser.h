#pragma once

#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "framework/xml/DistinctNames.h"
#include "framework/xml/ElementNameTable.h"
#include "framework/xml/ElementPlaces.h"
#include "framework/xml/ParsedDocument.h"
#include "framework/xml/XmlMemory.h"

namespace nbscore {

/// A parser that trusts no document and knows where each element's start tag begins.
///
/// It takes no document type declaration, so there are no entities beyond the five of XML itself; it fetches
/// nothing; elements nest no deeper than BaseTranslator::maxElementDepth, their names do not crowd the library's
/// table (ElementNameTable), and nothing is longer or more than DocumentLimits says. What it refuses, XML faults
/// included, leaves as VeskException with its line and column; so does a document that takes all the memory there is.
///
/// The document that it builds has no comments and no blanks between elements, and its attributes are compact
/// (CompactAttribute). Blanks that are all that an element holds are its content.
///
/// The XML library tells the position at the *end* of what it reports. The start of a tag is therefore the end of
/// whatever was reported before it, and every report has to be noted.
class PlacedDOMParser : public xercesc::XercesDOMParser {
public:
    /// @param documentMemory what the parser and the document take their memory from; the caller holds it for longer
    ///     than the parser lives.
    explicit PlacedDOMParser(std::shared_ptr<XmlMemory> documentMemory);

    struct Position {
        std::uint64_t line = 1;
        std::uint64_t column = 1;
    };

    /// Parses one document and hands it over with its table of places.
    ParsedDocument ParseAndAdopt(std::istream& stream);

    /// How far the document was understood.
    Position GetPosition() const { return lastEnd; }

    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId, const XMLCh* prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                      bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId, bool isRoot,
                    const XMLCh* prefix) override;
    void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override;
    void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) override;
    void docComment(const XMLCh* comment) override;
    void docPI(const XMLCh* target, const XMLCh* data) override;
    void XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
                 const XMLCh* actualEncoding) override;
    void doctypeDecl(const xercesc::DTDElementDecl& declaration, const XMLCh* publicId, const XMLCh* systemId,
                     bool hasInternalSubset, bool hasExternalSubset) override;
    void error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes kind, const XMLCh* text,
               const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) override;

protected:
    xercesc::DOMElement* createElement(const XMLCh* name) override;
    xercesc::DOMAttr* createAttr(const XMLCh* name) override;

private:
    void NotePosition();
    void NoteTagEnd();
    const XMLCh* KeepElementName(const xercesc::XMLElementDecl& declaration);
    const XMLCh* KeepName(const XMLCh* name);
    void NoteText(XMLSize_t length);
    void NoteBytes(std::uint64_t taken);
    [[noreturn]] void RefuseAttributes() const;
    void AddPendingBlanks();
    xercesc::DOMDocumentImpl& Document() { return *static_cast<xercesc::DOMDocumentImpl*>(getDocument()); }
    [[noreturn]] void Refuse(const std::string& message) const;
    [[noreturn]] static void RefuseAt(const Position& position, const std::string& message);

    std::shared_ptr<XmlMemory> memory;
    xercesc::SecurityManager limits;
    std::unique_ptr<ElementPlaces> places;
    DistinctNames names;
    ElementNameTable elementNames;
    /// The kept names of elements by the number that the library gives each; null for those not seen yet.
    std::vector<const XMLCh*> namesByNumber;
    const XMLCh* nextElementName = nullptr;
    Position lastTagBegin;
    Position lastEnd;
    Position lastTagEnd;
    /// What the parser has taken from the stream, and what of it when it last reported something.
    std::uint64_t bytesTaken = 0;
    std::uint64_t bytesReported = 0;
    std::uint64_t textLength = 0;
    int depth = 0;
    /// Blanks behind a tag: whether they are content, what comes next tells.
    std::basic_string<XMLCh> pendingBlanks;
    bool isBehindStartTag = false;
    bool isBehindText = false;
};

}  // namespace nbscore

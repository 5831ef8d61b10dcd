#include "framework/xml/PlacedDOMParser.h"

#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XMLUniDefs.hpp>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include "framework/BaseTranslator.h"
#include "framework/VeskException.h"
#include "framework/xml/CompactAttribute.h"
#include "framework/xml/DocumentLimits.h"
#include "framework/xml/StreamInputSource.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

/// A fault in a document's first bytes is found before the library counts lines.
VeskException RefusalAtPosition(VeskException::ExceptionCode code, const std::string& message, std::uint64_t line,
                                std::uint64_t column) {
    VeskException refusal(code, message);
    DocumentPlace place;
    place.line = std::max<std::uint64_t>(line, 1);
    place.column = std::max<std::uint64_t>(column, 1);
    refusal.SetPlace(place);
    return refusal;
}

bool IsEncodingFault(unsigned int code, const XMLCh* domain) {
    if (xercesc::XMLString::equals(domain, xercesc::XMLUni::fgXMLErrDomain)) {
        return code == xercesc::XMLErrs::BadXMLEncoding;
    }
    return code == xercesc::XMLExcepts::Trans_CantCreateCvtrFor;
}

/// Whether the characters of an encoding take several bytes each, by its name.
bool IsWide(const XMLCh* encoding) {
    static constexpr XmlName utf16("UTF-16");
    static constexpr XmlName utf32("UTF-32");
    static constexpr XmlName ucs("UCS-");
    static constexpr XmlName iso10646("ISO-10646-UCS");
    return std::ranges::any_of(std::initializer_list<const XMLCh*>{utf16, utf32, ucs, iso10646},
                               [&](const XMLCh* wide) { return xercesc::XMLString::startsWithI(encoding, wide); });
}

bool AreBlanks(const XMLCh* text, XMLSize_t length) {
    return std::all_of(text, text + length, [](XMLCh unit) {
        return unit == xercesc::chSpace || unit == xercesc::chLF || unit == xercesc::chHTab || unit == xercesc::chCR;
    });
}

/// The library's own words for this are "invalid document structure".
bool IsMissingRoot(unsigned int code, const XMLCh* domain) {
    return xercesc::XMLString::equals(domain, xercesc::XMLUni::fgXMLErrDomain) &&
           code == xercesc::XMLErrs::InvalidDocumentStructure;
}

/// The library's own words for this name an entity that has no name.
bool IsEndlessXmlDeclaration(unsigned int code, const XMLCh* domain) {
    return xercesc::XMLString::equals(domain, xercesc::XMLUni::fgExceptDomain) &&
           code == xercesc::XMLExcepts::Reader_CouldNotDecodeFirstLine;
}

/// The library reports a tag when it has it whole, and looks at each pair of its attributes before that. It takes six
/// or seven pieces of memory for every attribute that the longest tag so far did not have, and a few dozen for other
/// markup, however long: a tag that goes on for too long is seen by their number.
class PieceLimit {
public:
    static constexpr std::uint64_t most = 10 * DocumentLimits::mostAttributes;

    PieceLimit(XmlMemory& limitedMemory, std::function<void()> tooMany) : memory(limitedMemory) {
        memory.LimitPieces(most, std::move(tooMany));
    }
    ~PieceLimit() { memory.LiftLimit(); }
    PieceLimit(const PieceLimit&) = delete;
    PieceLimit& operator=(const PieceLimit&) = delete;

private:
    XmlMemory& memory;
};

constexpr XmlName firstName("PMML");

std::string ProblemOf(unsigned int code, const XMLCh* domain, const XMLCh* text) {
    if (IsMissingRoot(code, domain)) {
        return "it is empty, does not begin with an element, or is not in the encoding that it declares";
    }
    if (IsEndlessXmlDeclaration(code, domain)) return "its XML declaration cannot be read or does not end";
    return Utf8Of(text);
}

}  // namespace

PlacedDOMParser::PlacedDOMParser(std::shared_ptr<XmlMemory> documentMemory)
    : XercesDOMParser(nullptr, documentMemory.get()), memory(std::move(documentMemory)) {
    setValidationScheme(Val_Never);
    setDoNamespaces(false);
    setDoSchema(false);
    setLoadSchema(false);
    setLoadExternalDTD(false);
    setSkipDTDValidation(true);
    setDisableDefaultEntityResolution(true);
    setCreateCommentNodes(false);
    setCreateEntityReferenceNodes(false);
    // There is no entity to expand without a document type declaration: the limit is a second line of defence.
    limits.setEntityExpansionLimit(100);
    setSecurityManager(&limits);
    // Without this the library would only report faults to an error handler, and swallow them when there is none.
    getScanner()->setErrorReporter(this);
}

ParsedDocument PlacedDOMParser::ParseAndAdopt(std::istream& stream) {
    places = std::make_unique<ElementPlaces>();
    names = DistinctNames();
    elementNames = ElementNameTable();
    namesByNumber.clear();
    lastTagBegin = Position();
    lastEnd = Position();
    lastTagEnd = Position();
    bytesTaken = 0;
    bytesReported = 0;
    textLength = 0;
    depth = 0;
    pendingBlanks.clear();
    isBehindStartTag = false;
    isBehindText = false;
    const PieceLimit limit(*memory, [this] { RefuseAttributes(); });
    parse(StreamInputSource(stream, *memory, memory->GetWatch().GetLimits(),
                            [this](std::uint64_t taken) { NoteBytes(taken); }));
    ParsedDocument document(adoptDocument(), DocumentReleaser{memory});
    ElementPlaces::Attach(document.get(), std::move(places));
    return document;
}

void PlacedDOMParser::NotePosition() {
    const xercesc::Locator& locator = *getScanner()->getLocator();
    lastEnd = {locator.getLineNumber(), locator.getColumnNumber()};
    bytesReported = bytesTaken;
    memory->RecountPieces();
}

void PlacedDOMParser::NoteTagEnd() {
    NotePosition();
    lastTagEnd = lastEnd;
    textLength = 0;
}

/// The library reports a tag, comment or section when it has it whole. What is too long must be seen before that.
void PlacedDOMParser::NoteBytes(std::uint64_t taken) {
    bytesTaken = taken;
    if (bytesTaken - bytesReported <= DocumentLimits::longestMarkup) return;
    Refuse("A tag, comment or section is longer than " + std::to_string(DocumentLimits::longestMarkup) + " bytes.");
}

/// Long texts are reported in pieces.
void PlacedDOMParser::NoteText(XMLSize_t length) {
    textLength += length;
    if (textLength <= DocumentLimits::longestText) return;
    RefuseAt(lastTagEnd, "A text is longer than " + std::to_string(DocumentLimits::longestText) + " characters.");
}

void PlacedDOMParser::RefuseAttributes() const {
    Refuse("A tag has more than " + std::to_string(DocumentLimits::mostAttributes) + " attributes.");
}

/// The name's one copy in the document.
const XMLCh* PlacedDOMParser::KeepName(const XMLCh* name) {
    if (const XMLCh* const kept = names.Find(name)) return kept;
    if (xercesc::XMLString::stringLen(name) > DocumentLimits::longestName) {
        RefuseAt(lastTagBegin, "The name \"" + ExcerptOf(name) + "\" is longer than " +
                                   std::to_string(DocumentLimits::longestName) + " characters.");
    }
    const XMLCh* const kept = names.Keep(name, Document());
    if (names.GetCount() > DocumentLimits::mostNames) {
        RefuseAt(lastTagBegin, "The document uses more than " + std::to_string(DocumentLimits::mostNames) +
                                   " different names for elements and attributes.");
    }
    if (names.GetLength() > DocumentLimits::longestNames) {
        RefuseAt(lastTagBegin, "The document's different names for elements and attributes have more than " +
                                   std::to_string(DocumentLimits::longestNames) + " characters together.");
    }
    return kept;
}

/// The library numbers the names of elements, so that nearly all are found without a look at them.
const XMLCh* PlacedDOMParser::KeepElementName(const xercesc::XMLElementDecl& declaration) {
    const XMLSize_t number = declaration.getId();
    if (number >= namesByNumber.size()) namesByNumber.resize(number + 1);
    const XMLCh*& kept = namesByNumber[number];
    if (kept != nullptr) return kept;
    kept = KeepName(declaration.getFullName());
    if (elementNames.Add(kept)) return kept;
    RefuseAt(lastTagBegin, "The names of elements collide: more than " +
                               std::to_string(ElementNameTable::mostInOnePlace) +
                               " of them fall on one place of the XML parser's table.");
}

void PlacedDOMParser::Refuse(const std::string& message) const {
    RefuseAt(lastEnd, message);
}

void PlacedDOMParser::RefuseAt(const Position& position, const std::string& message) {
    throw RefusalAtPosition(VeskException::MalformedDocument, message, position.line, position.column);
}

void PlacedDOMParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId, const XMLCh* prefix,
                                   const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount,
                                   bool isEmpty, bool isRoot) {
    if (++depth > BaseTranslator::maxElementDepth) {
        Refuse("Elements nest deeper than " + std::to_string(BaseTranslator::maxElementDepth) + " levels.");
    }
    if (attributeCount > DocumentLimits::mostAttributes) RefuseAttributes();
    lastTagBegin = lastEnd;
    nextElementName = KeepElementName(declaration);
    places->Add(lastEnd.line, lastEnd.column);
    NoteTagEnd();
    pendingBlanks.clear();
    isBehindStartTag = true;
    isBehindText = false;
    XercesDOMParser::startElement(declaration, urlId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void PlacedDOMParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId, bool isRoot,
                                 const XMLCh* prefix) {
    --depth;
    NoteTagEnd();
    if (isBehindStartTag) AddPendingBlanks();
    pendingBlanks.clear();
    isBehindStartTag = false;
    isBehindText = false;
    XercesDOMParser::endElement(declaration, urlId, isRoot, prefix);
}

/// The library's own nodes look their names up in a table that never grows. They are made with a name that is found at
/// once, and get the kept one.
xercesc::DOMElement* PlacedDOMParser::createElement(const XMLCh*) {
    auto* const element =
        new (&Document(), xercesc::DOMMemoryManager::ELEMENT_OBJECT) xercesc::DOMElementImpl(&Document(), firstName);
    element->fName = nextElementName;
    return element;
}

xercesc::DOMAttr* PlacedDOMParser::createAttr(const XMLCh* name) {
    const XMLCh* const kept = KeepName(name);
    auto* const attribute = new (&Document()) CompactAttribute(&Document(), firstName);
    attribute->fName = kept;
    return attribute;
}

void PlacedDOMParser::AddPendingBlanks() {
    if (!pendingBlanks.empty()) XercesDOMParser::docCharacters(pendingBlanks.data(), pendingBlanks.size(), false);
    pendingBlanks.clear();
}

void PlacedDOMParser::docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) {
    NotePosition();
    NoteText(length);
    if (!isCdata && !isBehindText && AreBlanks(text, length)) {
        pendingBlanks.append(text, length);
        return;
    }
    AddPendingBlanks();
    isBehindText = true;
    XercesDOMParser::docCharacters(text, length, isCdata);
}

void PlacedDOMParser::ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) {
    NotePosition();
    XercesDOMParser::ignorableWhitespace(text, length, isCdata);
}

void PlacedDOMParser::docComment(const XMLCh* comment) {
    NotePosition();
    XercesDOMParser::docComment(comment);
}

void PlacedDOMParser::docPI(const XMLCh* target, const XMLCh* data) {
    NotePosition();
    AddPendingBlanks();
    XercesDOMParser::docPI(target, data);
}

void PlacedDOMParser::XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
                              const XMLCh* actualEncoding) {
    NotePosition();
    if (encoding != nullptr && *encoding != 0 && IsWide(encoding) != IsWide(actualEncoding)) {
        Refuse("The document declares the encoding " + ExcerptOf(encoding) + ", but is in " +
               ExcerptOf(actualEncoding) + ".");
    }
    XercesDOMParser::XMLDecl(version, encoding, standalone, actualEncoding);
}

/// Called before the first declaration of an internal subset is looked at, and before any external one is sought.
void PlacedDOMParser::doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh*, const XMLCh*, bool, bool) {
    Refuse("A document type declaration is not accepted.");
}

void PlacedDOMParser::error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes kind,
                            const XMLCh* text, const XMLCh*, const XMLCh*, XMLFileLoc line, XMLFileLoc column) {
    if (kind == xercesc::XMLErrorReporter::ErrType_Warning) return;
    if (IsEncodingFault(code, domain)) {
        throw RefusalAtPosition(VeskException::UnsupportedEncoding,
                                "The document's encoding is not supported: " + Utf8Of(text) + ".", line, column);
    }
    throw RefusalAtPosition(VeskException::MalformedDocument,
                            "The document is no well-formed XML: " + ProblemOf(code, domain, text) + ".", line, column);
}

}  // namespace nbscore

#include "xml/XmlParser.h"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/Blanks.h"
#include "pmml/DocumentLimits.h"
#include "pmml/DocumentNames.h"
#include "pmml/RefusalTable.h"
#include "pmml/TreeBuilder.h"
#include "pmml/TreeEvents.h"
#include "pmml/Utf8.h"
#include "xml/XmlLibrary.h"

namespace nbscore {
namespace {

bool IsOfXmlItself(const XMLCh* domain) {
    return xercesc::XMLString::equals(domain, xercesc::XMLUni::fgXMLErrDomain);
}

bool IsEncodingFault(unsigned int code, const XMLCh* domain) {
    if (IsOfXmlItself(domain)) return code == xercesc::XMLErrs::BadXMLEncoding;
    return code == xercesc::XMLExcepts::Trans_CantCreateCvtrFor;
}

/// Whether bytes were found that the document's encoding does not have.
bool IsByteFault(unsigned int code, const XMLCh* domain) {
    static constexpr xercesc::XMLExcepts::Codes byteFaults[] = {
        xercesc::XMLExcepts::Trans_BadSrcSeq,        xercesc::XMLExcepts::UTF8_FormatError,
        xercesc::XMLExcepts::UTF8_Invalid_3BytesSeq, xercesc::XMLExcepts::UTF8_Irregular_3BytesSeq,
        xercesc::XMLExcepts::UTF8_Invalid_4BytesSeq, xercesc::XMLExcepts::UTF8_Exceeds_BytesLimit};
    return !IsOfXmlItself(domain) && std::ranges::find(byteFaults, code) != std::end(byteFaults);
}

/// The refusal for what the library reports in words of its own.
VeskException RefusalFor(unsigned int code, const XMLCh* domain, const XMLCh* text) {
    const std::string problem = WithoutHalfPairs(Utf8Of(text));
    if (IsEncodingFault(code, domain)) return MakeRefusal(Refusal::DocumentEncodingUnknown, {problem});
    // The library's own words are "invalid document structure".
    if (IsOfXmlItself(domain) && code == xercesc::XMLErrs::InvalidDocumentStructure) {
        return MakeRefusal(Refusal::DocumentIsEmpty);
    }
    // The library's own words name an entity that has no name.
    if (!IsOfXmlItself(domain) && code == xercesc::XMLExcepts::Reader_CouldNotDecodeFirstLine) {
        return MakeRefusal(Refusal::NotWellFormed, {"its XML declaration cannot be read or does not end"});
    }
    return MakeRefusal(IsByteFault(code, domain) ? Refusal::BytesOfOtherEncoding : Refusal::NotWellFormed, {problem});
}

/// Whether the characters of an encoding take several bytes each, by its name.
bool IsWide(const XMLCh* encoding) {
    static constexpr std::array<std::u16string_view, 4> wide = {u"UTF-16", u"UTF-32", u"UCS-", u"ISO-10646-UCS"};
    return std::ranges::any_of(
        wide, [&](std::u16string_view name) { return xercesc::XMLString::startsWithI(encoding, name.data()); });
}

bool AreBlanks(const XMLCh* text, XMLSize_t length) {
    return std::all_of(text, text + length, [](XMLCh unit) { return IsBlank(unit); });
}

/// Gives the refusal of malformed XML in a step its place.
template <typename Step>
auto At(const TextPosition& position, const Step& step) {
    try {
        return step();
    } catch (const VeskException& refusal) {
        if (refusal.GetCode() != VeskException::MalformedDocument) throw;
        throw RefusalAtPosition(refusal, position);
    }
}

/// Lets the XML library read a document's bytes, which must outlive the source.
class BytesSource : public xercesc::InputSource {
public:
    /// Told how many bytes the parser has taken so far, before it takes more; may throw to end the parsing.
    using Watch = std::function<void(std::uint64_t bytesTaken)>;

    /// @param memory what the library's objects come from.
    BytesSource(DocumentBytes& documentBytes, XmlMemory& memory, Watch watch)
        : InputSource(&memory), bytes(documentBytes), beforeReading(std::move(watch)) {}

    xercesc::BinInputStream* makeStream() const override {
        return new (getMemoryManager()) Stream(bytes, beforeReading);
    }

private:
    class Stream : public xercesc::BinInputStream {
    public:
        Stream(DocumentBytes& documentBytes, const Watch& watch) : bytes(documentBytes), beforeReading(watch) {}

        XMLFilePos curPos() const override { return bytes.CountRead(); }
        const XMLCh* getContentType() const override { return nullptr; }
        XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
            if (!bytes.HasMore()) return 0;
            beforeReading(bytes.CountRead());
            return bytes.Read(reinterpret_cast<char*>(toFill), maxToRead);
        }

    private:
        DocumentBytes& bytes;
        const Watch& beforeReading;
    };

    DocumentBytes& bytes;
    Watch beforeReading;
};

/// Builds a tree of what the XML library's scanner reports.
///
/// The library tells the position at the *end* of what it reports. The start of a tag is therefore the end of
/// whatever was reported before it, and every report has to be noted.
class TreeParser : public xercesc::SAXParser {
public:
    TreeParser(XmlMemory& parserMemory, TreeBuilder& treeBuilder)
        : SAXParser(nullptr, &parserMemory),
          memory(parserMemory),
          builder(treeBuilder),
          names(treeBuilder),
          events(treeBuilder) {
        setValidationScheme(Val_Never);
        setDoNamespaces(false);
        setDoSchema(false);
        setLoadSchema(false);
        setLoadExternalDTD(false);
        setSkipDTDValidation(true);
        setDisableDefaultEntityResolution(true);
        // There is no entity to expand without a document type declaration: the limit is a second line of defence.
        securityManager.setEntityExpansionLimit(100);
        setSecurityManager(&securityManager);
        // The library reports to this object as soon as it has handlers, which otherwise stay idle.
        setDocumentHandler(&handlers);
        setErrorHandler(&handlers);
        setDTDHandler(&handlers);
    }

    void Parse(DocumentBytes& bytes) {
        // The library reports a tag when it has it whole, and looks at each pair of its attributes before that. It
        // takes six or seven pieces of memory for every attribute that the longest tag so far did not have, and a few
        // dozen for other markup, however long: a tag that goes on for too long is seen by their number.
        memory.LimitPieces(10 * DocumentLimits::mostAttributes, [this] { RefuseAttributes(); });
        parse(BytesSource(bytes, memory, [this](std::uint64_t taken) { NoteBytes(taken); }));
        memory.LiftLimit();
    }

    /// How far the document was understood.
    TextPosition GetPosition() const { return lastEnd; }

    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int /*urlId*/, const XMLCh* /*prefix*/,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                      bool isRoot) override {
        if (events.GetDepth() == DocumentLimits::maxElementDepth) {
            Refuse(Refusal::NestedTooDeep, {std::to_string(DocumentLimits::maxElementDepth)});
        }
        if (attributeCount > DocumentLimits::mostAttributes) RefuseAttributes();
        const TextPosition begin = lastEnd;
        const Name name = At(begin, [&] { return FindName(declaration); });
        NoteTagEnd();
        events.BeginElement(name, begin, [&](const std::string& wanted) {
            const std::basic_string<XMLCh> spelling = Utf16Of(wanted);
            std::optional<std::string> value;
            for (XMLSize_t i = 0; i < attributeCount && !value; ++i) {
                const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
                if (spelling == attribute.getQName()) value = Utf8Of(attribute.getValue());
            }
            return value;
        });
        for (XMLSize_t i = 0; i < attributeCount; ++i)
            AddAttribute(*attributes.elementAt(i), begin);
        if (isEmpty) endElement(declaration, 0, isRoot, nullptr);
    }

    void endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*urlId*/, bool /*isRoot*/,
                    const XMLCh* /*prefix*/) override {
        NoteTagEnd();
        events.EndElement();
    }

    void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override {
        NotePosition();
        NoteText(length);
        utf8.clear();
        AppendUtf8(utf8, text, length);
        if (!isCdata && AreBlanks(text, length)) {
            events.AddBlanks(utf8);
        } else {
            events.AddText(utf8);
        }
    }

    void ignorableWhitespace(const XMLCh* /*text*/, XMLSize_t /*length*/, bool /*isCdata*/) override { NotePosition(); }
    void docComment(const XMLCh* /*comment*/) override { NotePosition(); }
    void docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) override {
        NotePosition();
        events.AddInstruction();
    }

    void XMLDecl(const XMLCh* /*version*/, const XMLCh* encoding, const XMLCh* /*standalone*/,
                 const XMLCh* actualEncoding) override {
        NotePosition();
        if (encoding == nullptr || *encoding == 0 || IsWide(encoding) == IsWide(actualEncoding)) return;
        Refuse(Refusal::DeclaredEncodingDiffers, {ExcerptOf(Utf8Of(encoding)), ExcerptOf(Utf8Of(actualEncoding))});
    }

    /// Called before the first declaration of an internal subset is looked at, and before any external one is sought.
    void doctypeDecl(const xercesc::DTDElementDecl& /*declaration*/, const XMLCh* /*publicId*/,
                     const XMLCh* /*systemId*/, bool /*hasInternalSubset*/, bool /*hasExternalSubset*/) override {
        Refuse(Refusal::DoctypeFound);
    }

    void error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes kind, const XMLCh* text,
               const XMLCh* /*systemId*/, const XMLCh* /*publicId*/, XMLFileLoc line, XMLFileLoc column) override {
        if (kind == xercesc::XMLErrorReporter::ErrType_Warning) return;
        throw RefusalAtPosition(RefusalFor(code, domain, text), {line, column});
    }

private:
    /// Nearly all names of elements are found by the number that the library gives them.
    Name FindName(const xercesc::XMLElementDecl& declaration) {
        const XMLSize_t number = declaration.getId();
        if (number >= namesByNumber.size()) namesByNumber.resize(2 * number + 1, Name::none);
        Name& known = namesByNumber[number];
        if (known == Name::none) known = names.FindOfElement(Utf8Of(declaration.getFullName()));
        return known;
    }

    void AddAttribute(const xercesc::XMLAttr& attribute, const TextPosition& tagBegin) {
        utf8.clear();
        AppendUtf8(utf8, attribute.getQName(), xercesc::XMLString::stringLen(attribute.getQName()));
        const Name name = At(tagBegin, [&] { return names.Find(utf8); });
        utf8.clear();
        AppendUtf8(utf8, attribute.getValue(), xercesc::XMLString::stringLen(attribute.getValue()));
        builder.AddAttribute(name, utf8);
    }

    void NotePosition() {
        const xercesc::Locator& locator = *getScanner().getLocator();
        lastEnd = {locator.getLineNumber(), locator.getColumnNumber()};
        bytesReported = bytesTaken;
        memory.RecountPieces();
    }

    void NoteTagEnd() {
        NotePosition();
        lastTagEnd = lastEnd;
        textLength = 0;
    }

    /// The library reports a tag, comment or section when it has it whole. What is too long must be seen before that.
    void NoteBytes(std::uint64_t taken) {
        bytesTaken = taken;
        if (bytesTaken - bytesReported <= DocumentLimits::longestMarkup) return;
        Refuse(Refusal::TagTooLong, {std::to_string(DocumentLimits::longestMarkup)});
    }

    /// Long texts are reported in pieces.
    void NoteText(XMLSize_t length) {
        textLength += length;
        if (textLength <= DocumentLimits::longestText) return;
        throw RefusalAtPosition(MakeRefusal(Refusal::TextTooLong, {std::to_string(DocumentLimits::longestText)}),
                                lastTagEnd);
    }

    [[noreturn]] void RefuseAttributes() const {
        Refuse(Refusal::TooManyAttributes, {std::to_string(DocumentLimits::mostAttributes)});
    }
    [[noreturn]] void Refuse(Refusal id, std::initializer_list<std::string_view> arguments = {}) const {
        throw RefusalAtPosition(MakeRefusal(id, arguments), lastEnd);
    }

    XmlMemory& memory;
    TreeBuilder& builder;
    xercesc::HandlerBase handlers;
    xercesc::SecurityManager securityManager;
    DocumentNames names;
    TreeEvents events;
    /// By the library's number.
    std::vector<Name> namesByNumber;
    std::string utf8;
    TextPosition lastEnd;
    TextPosition lastTagEnd;
    /// What the parser has taken from the stream, and what of it when it last reported something.
    std::uint64_t bytesTaken = 0;
    std::uint64_t bytesReported = 0;
    std::uint64_t textLength = 0;
};

}  // namespace

ParsedDocument ParseByLibrary(DocumentBytes& bytes, const Limits& limits) {
    const auto parse = [&](TextPosition& reached) {
        const auto documentMemory = std::make_shared<DocumentMemory>(limits);
        XmlMemory memory(documentMemory);
        TreeBuilder builder(limits, documentMemory);
        TreeParser parser(memory, builder);
        try {
            parser.Parse(bytes);
            return builder.Finish();
        } catch (const xercesc::OutOfMemoryException&) {
            reached = parser.GetPosition();
            throw std::bad_alloc();
        } catch (...) {
            reached = parser.GetPosition();
            throw;
        }
    };
    return ParseWithinMemory(parse);
}

}  // namespace nbscore

#include "framework/xml/ParsedDocument.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include <istream>
#include <memory>
#include <new>

#include "framework/VeskException.h"
#include "framework/xml/ElementPlaces.h"
#include "framework/xml/MemoryRefusal.h"
#include "framework/xml/PlacedDOMParser.h"
#include "framework/xml/PmmlPrefix.h"
#include "framework/xml/XmlFaults.h"
#include "framework/xml/XmlMemory.h"
#include "framework/xml/XmlPlatform.h"

namespace nbscore {
namespace {

constexpr const char* unreadable = "The document cannot be read: the stream failed.";

/// A stream whose owner wants exceptions throws them in the middle of the parser; they are switched off meanwhile.
class QuietStream {
public:
    explicit QuietStream(std::istream& input) : stream(input), wanted(input.exceptions()) {
        stream.exceptions(std::ios::goodbit);
    }
    ~QuietStream() {
        try {
            stream.exceptions(wanted);
        } catch (const std::ios_base::failure&) {
            // Setting the mask throws at once when the stream is in such a state. The mask is set all the same.
        }
    }
    QuietStream(const QuietStream&) = delete;
    QuietStream& operator=(const QuietStream&) = delete;

private:
    std::istream& stream;
    std::ios::iostate wanted;
};

/// Parses and lets go of all that was built when memory ends, so that there is some for saying so.
ParsedDocument ParseWithinMemory(std::istream& stream, const Limits& limits) {
    PlacedDOMParser::Position reached;
    const auto parse = [&] {
        const auto memory = std::make_shared<XmlMemory>(limits);
        PlacedDOMParser parser(memory);
        try {
            return parser.ParseAndAdopt(stream);
        } catch (...) {
            reached = parser.GetPosition();
            throw;
        }
    };
    const auto placed = [&](VeskException refusal) {
        DocumentPlace place;
        place.line = reached.line;
        place.column = reached.column;
        refusal.SetPlace(place);
        return refusal;
    };
    try {
        return parse();
    } catch (const VeskException& refusal) {
        if (refusal.HasPlace()) throw;
        throw placed(refusal);  // of a limit
    } catch (const xercesc::OutOfMemoryException&) {
        throw placed(RefusalForMemory());
    } catch (const std::bad_alloc&) {
        throw placed(RefusalForMemory());
    }
}

}  // namespace

void DocumentReleaser::operator()(xercesc::DOMDocument* document) const {
    ElementPlaces::Detach(document);
    document->release();
}

ParsedDocument ParseDocument(std::istream& stream, const Limits& limits) {
    EnsureXmlPlatform();
    const QuietStream quiet(stream);
    if (stream.fail() && !stream.eof()) throw VeskException(VeskException::UnreadableSource, unreadable);
    try {
        ParsedDocument document = ParseWithinMemory(stream, limits);
        if (stream.bad()) throw VeskException(VeskException::UnreadableSource, unreadable);
        DropPmmlPrefix(*document);
        return document;
    } catch (const VeskException&) {
        // A stream that broke off is at fault itself, whatever the parser made of the part before.
        if (stream.bad()) throw VeskException(VeskException::UnreadableSource, unreadable);
        throw;
    }
}

}  // namespace nbscore

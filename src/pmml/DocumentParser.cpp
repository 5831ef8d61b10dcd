#include "pmml/DocumentParser.h"

#include <istream>

#include "pmml/DocumentBytes.h"
#include "pmml/PlainParser.h"
#include "pmml/RefusalTable.h"
#include "pmml/XmlServices.h"

namespace nbscore {
namespace {

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

}  // namespace

ParsedDocument ParseDocument(std::istream& stream, const Limits& limits) {
    const QuietStream quiet(stream);
    if (stream.fail() && !stream.eof()) throw MakeRefusal(Refusal::StreamBroken);
    try {
        DocumentBytes bytes(stream, limits);
        ParsedDocument document = ParsePlain(bytes, limits);
        if (document == nullptr) document = GetXmlServices().Parse(bytes, limits);
        if (stream.bad()) throw MakeRefusal(Refusal::StreamBroken);
        return document;
    } catch (const VeskException&) {
        // A stream that broke off is at fault itself, whatever the parser made of the part before.
        if (stream.bad()) throw MakeRefusal(Refusal::StreamBroken);
        throw;
    }
}

}  // namespace nbscore

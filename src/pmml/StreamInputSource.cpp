#include "pmml/StreamInputSource.h"

#include <algorithm>
#include <istream>
#include <string>
#include <utility>

#include "pmml/RefusalTable.h"

namespace nbscore {
namespace {

/// To the parser a stream that fails looks like one that ends; the caller of the parser asks the stream which.
class StdInputStream : public xercesc::BinInputStream {
public:
    StdInputStream(std::istream& input, const Limits& documentLimits, const StreamInputSource::Watch& watch)
        : stream(input), limits(documentLimits), beforeReading(watch) {}

    XMLFilePos curPos() const override { return position; }
    const XMLCh* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        if (!stream.good()) return 0;
        beforeReading(position);
        limits.ThrowIfCancelled();
        constexpr XMLSize_t atOnce = 1 << 20;
        stream.read(reinterpret_cast<char*>(toFill), static_cast<std::streamsize>(std::min(maxToRead, atOnce)));
        const auto count = static_cast<XMLSize_t>(stream.gcount());
        position += count;
        // A stream that hears of it while it waits can do no more than end early.
        if (!stream.good()) limits.ThrowIfCancelled();
        RequireFewBytes();
        return count;
    }

private:
    void RequireFewBytes() const {
        if (!limits.maxDocumentBytes || position <= *limits.maxDocumentBytes) return;
        throw MakeRefusal(Refusal::DocumentTooLong, {std::to_string(*limits.maxDocumentBytes)});
    }

    std::istream& stream;
    const Limits& limits;
    const StreamInputSource::Watch& beforeReading;
    XMLFilePos position = 0;
};

}  // namespace

StreamInputSource::StreamInputSource(std::istream& input, xercesc::MemoryManager& memory, const Limits& documentLimits,
                                     Watch watch)
    : InputSource(&memory), stream(input), limits(documentLimits), beforeReading(std::move(watch)) {}

xercesc::BinInputStream* StreamInputSource::makeStream() const {
    return new (getMemoryManager()) StdInputStream(stream, limits, beforeReading);
}

}  // namespace nbscore

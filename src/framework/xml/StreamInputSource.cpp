#include "framework/xml/StreamInputSource.h"

#include <algorithm>
#include <istream>
#include <utility>

namespace nbscore {
namespace {

/// To the parser a stream that fails looks like one that ends; whoever started the parser asks the stream which.
class StdInputStream : public xercesc::BinInputStream {
public:
    StdInputStream(std::istream& input, const StreamInputSource::Watch& watch) : stream(input), beforeReading(watch) {}

    XMLFilePos curPos() const override { return position; }
    const XMLCh* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        if (!stream.good()) return 0;
        beforeReading(position);
        constexpr XMLSize_t limit = 1 << 20;
        stream.read(reinterpret_cast<char*>(toFill), static_cast<std::streamsize>(std::min(maxToRead, limit)));
        const auto count = static_cast<XMLSize_t>(stream.gcount());
        position += count;
        return count;
    }

private:
    std::istream& stream;
    const StreamInputSource::Watch& beforeReading;
    XMLFilePos position = 0;
};

}  // namespace

StreamInputSource::StreamInputSource(std::istream& input, xercesc::MemoryManager& memory, Watch watch)
    : InputSource(&memory), stream(input), beforeReading(std::move(watch)) {}

xercesc::BinInputStream* StreamInputSource::makeStream() const {
    return new (getMemoryManager()) StdInputStream(stream, beforeReading);
}

}  // namespace nbscore

#include "framework/xml/StreamInputSource.h"

#include <algorithm>
#include <istream>
#include <limits>

namespace nbscore {
namespace {

/// To the parser a stream that fails looks like one that ends; whoever started the parser asks the stream which.
class StdInputStream : public xercesc::BinInputStream {
public:
    explicit StdInputStream(std::istream& input) : stream(input) {}

    XMLFilePos curPos() const override { return position; }
    const XMLCh* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        if (!stream.good()) return 0;
        constexpr XMLSize_t limit = 1 << 20;
        stream.read(reinterpret_cast<char*>(toFill), static_cast<std::streamsize>(std::min(maxToRead, limit)));
        const auto count = static_cast<XMLSize_t>(stream.gcount());
        position += count;
        return count;
    }

private:
    std::istream& stream;
    XMLFilePos position = 0;
};

}  // namespace

StreamInputSource::StreamInputSource(std::istream& input) : stream(input) {}

xercesc::BinInputStream* StreamInputSource::makeStream() const {
    return new StdInputStream(stream);
}

}  // namespace nbscore

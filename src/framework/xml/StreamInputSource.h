#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <cstdint>
#include <functional>
#include <iosfwd>

namespace nbscore {

/// Lets the XML parser read a standard stream. The stream stays the caller's and must outlive the source.
class StreamInputSource : public xercesc::InputSource {
public:
    /// Told how many bytes the parser has taken so far, before it takes more; may throw to end the parsing.
    using Watch = std::function<void(std::uint64_t bytesTaken)>;

    /// @param memory what the parser's objects come from.
    StreamInputSource(std::istream& input, xercesc::MemoryManager& memory, Watch watch);

    xercesc::BinInputStream* makeStream() const override;

private:
    std::istream& stream;
    Watch beforeReading;
};

}  // namespace nbscore

#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <cstdint>
#include <functional>
#include <iosfwd>

#include "framework/Limits.h"

namespace nbscore {

/// Lets the XML parser read a standard stream. The stream stays the caller's and must outlive the source.
class StreamInputSource : public xercesc::InputSource {
public:
    /// Told how many bytes the parser has taken so far, before it takes more; may throw to end the parsing.
    using Watch = std::function<void(std::uint64_t bytesTaken)>;

    /// @param memory what the parser's objects come from.
    /// @param documentLimits asked around each reading. Throws VeskException 12, without a place, behind the last byte
    ///     that they allow, and CancelledError.
    StreamInputSource(std::istream& input, xercesc::MemoryManager& memory, const Limits& documentLimits, Watch watch);

    xercesc::BinInputStream* makeStream() const override;

private:
    std::istream& stream;
    const Limits& limits;
    Watch beforeReading;
};

}  // namespace nbscore

#pragma once

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <iosfwd>

namespace nbscore {

/// Lets the XML parser read a standard stream. The stream stays the caller's and must outlive the source.
class StreamInputSource : public xercesc::InputSource {
public:
    explicit StreamInputSource(std::istream& input);

    xercesc::BinInputStream* makeStream() const override;

private:
    std::istream& stream;
};

}  // namespace nbscore

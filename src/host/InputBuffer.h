#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// The part of a stream that a reader is working on: grows at its end block by block, shrinks at its front.
///
/// Takes what the stream has ready and does not wait for whole blocks, so that a slow pipe is read as it flows.
class InputBuffer {
public:
    static constexpr std::size_t blockBytes = std::size_t{64} << 10;

    /// @param stream borrowed; @param sourceName what errors call it.
    InputBuffer(std::istream& stream, std::string sourceName);

    /// Takes more bytes from the stream; false when there are none left. Throws InputOutputError when it fails.
    bool Extend();
    /// Forgets bytes at the front.
    void Discard(std::size_t count) { begin += count; }

    /// What is held; valid until the next Extend.
    std::string_view GetBytes() const { return {bytes.data() + begin, end - begin}; }
    /// The same, to be changed in place.
    char* GetMutableBytes() { return bytes.data() + begin; }
    bool IsAtEnd() const { return atEnd; }
    std::uint64_t GetBytesRead() const { return bytesRead; }
    const std::string& GetSourceName() const { return sourceName; }

private:
    void MakeRoom();

    std::istream& input;
    std::string sourceName;
    std::vector<char> bytes;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool atEnd = false;
    std::uint64_t bytesRead = 0;
};

}  // namespace nbscore

#include "host/InputBuffer.h"

#include <algorithm>
#include <utility>

#include "host/HostError.h"

namespace nbscore {

InputBuffer::InputBuffer(std::istream& stream, std::string name)
    : input(stream), sourceName(std::move(name)), bytes(2 * blockBytes) {}

bool InputBuffer::Extend() {
    if (atEnd) return false;
    MakeRoom();
    char* const room = bytes.data() + end;
    std::streamsize count = 0;
    // Looking at one character waits for the stream; what it then has ready is taken without waiting again.
    if (input.peek() != std::istream::traits_type::eof()) {
        count = input.readsome(room, blockBytes);
        if (count == 0) {
            input.read(room, blockBytes);  // a stream without a buffer of its own never has anything ready
            count = input.gcount();
        }
    }
    if (input.bad() || (input.fail() && !input.eof())) {
        throw InputOutputError(sourceName + ": reading failed");
    }
    atEnd = count == 0;
    end += static_cast<std::size_t>(count);
    bytesRead += static_cast<std::uint64_t>(count);
    return !atEnd;
}

void InputBuffer::MakeRoom() {
    if (bytes.size() - end >= blockBytes) return;
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(begin), bytes.begin() + static_cast<std::ptrdiff_t>(end),
              bytes.begin());
    end -= begin;
    begin = 0;
    if (bytes.size() - end < blockBytes) bytes.resize(2 * bytes.size());
}

}  // namespace nbscore

#include "output/OutputBuffer.h"

#include <cerrno>
#include <cstddef>
#include <utility>

#include "output/FileSystemCalls.h"

namespace nbscore {
namespace {

constexpr std::size_t blockBytes = std::size_t{64} << 10;

}  // namespace

bool RepeatInterrupted(const std::function<bool()>& call, const OnInterruption& onInterruption) {
    while (!call()) {
        if (errno != EINTR) return false;
        if (onInterruption) onInterruption();
    }
    return true;
}

bool OutputBuffer::Write(std::FILE* file, std::string_view bytes) {
    if (gathered.size() + bytes.size() < blockBytes) {
        gathered += bytes;
        return true;
    }
    return Flush(file) && WriteOut(file, bytes);
}

bool OutputBuffer::Flush(std::FILE* file) {
    const std::string bytes = std::exchange(gathered, {});
    return WriteOut(file, bytes);
}

bool OutputBuffer::WriteOut(std::FILE* file, std::string_view bytes) const {
    std::size_t room = bytes.size();
    const auto writeSome = [file, &bytes, &room] {
        const std::ptrdiff_t count = WriteSomeBytes(file, bytes.substr(0, room));
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
        return count >= 0;
    };
    while (!bytes.empty()) {
        if (waiting.waitForRoom) room = waiting.waitForRoom(file);
        if (!RepeatInterrupted(writeSome, waiting.onInterruption)) return false;
        // A call that wrote a part was interrupted too: the next one could wait for ever.
        if (!bytes.empty() && waiting.onInterruption) waiting.onInterruption();
    }
    return true;
}

}  // namespace nbscore

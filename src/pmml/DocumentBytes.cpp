#include "pmml/DocumentBytes.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <string>

#include "pmml/RefusalTable.h"

namespace nbscore {
namespace {

constexpr std::size_t bytesPerBlock = 256 * 1024;
/// A writer who is slow is waited for no longer than it takes to send so many.
constexpr std::size_t bytesPerReading = 48 * 1024;

}  // namespace

std::string_view DocumentBytes::Extend(const char* kept, DocumentMemory& memory) {
    const std::size_t numKept =
        blocks.empty() ? 0 : static_cast<std::size_t>(blocks.back().bytes.get() + blocks.back().size - kept);
    if (!stream.good() && !blocks.empty()) return {kept, numKept};
    // What is long is looked at again from its start: reading as much again keeps the time in proportion to its length.
    const std::size_t wanted = std::max(bytesPerReading, numKept);
    if (blocks.empty() || blocks.back().capacity - blocks.back().size < wanted) {
        const std::size_t capacity = std::max(bytesPerBlock, 2 * (numKept + wanted));
        memory.Take(capacity);
        Block block{std::unique_ptr<char[]>(new char[capacity + 1]), numKept, capacity};
        if (numKept > 0) {
            std::memcpy(block.bytes.get(), kept, numKept);
            blocks.back().size -= numKept;
        }
        blocks.push_back(std::move(block));
    }
    Block& block = blocks.back();
    const std::size_t begin = block.size - numKept;
    const std::size_t added = ReadStream(block.bytes.get() + block.size, wanted);
    block.size += added;
    bytesKept += added;
    block.bytes[block.size] = '\0';
    RequireFewBytes(bytesKept);
    return {block.bytes.get() + begin, block.size - begin};
}

std::size_t DocumentBytes::Read(char* toFill, std::size_t most) {
    std::size_t count = 0;
    while (!blocks.empty() && count == 0) {
        const Block& block = blocks.front();
        count = std::min(most, block.size - bytesReadOfBlock);
        std::memcpy(toFill, block.bytes.get() + bytesReadOfBlock, count);
        bytesReadOfBlock += count;
        if (bytesReadOfBlock < block.size) break;
        blocks.pop_front();
        bytesReadOfBlock = 0;
    }
    if (count == 0) count = ReadStream(toFill, most);
    bytesRead += count;
    RequireFewBytes(bytesRead);
    return count;
}

bool DocumentBytes::HasMore() const {
    return !blocks.empty() || stream.good();
}

std::size_t DocumentBytes::ReadStream(char* toFill, std::size_t most) {
    if (!stream.good()) return 0;
    limits.ThrowIfCancelled();
    stream.read(toFill, static_cast<std::streamsize>(most));
    // A stream that hears of it while it waits can do no more than end early.
    if (!stream.good()) limits.ThrowIfCancelled();
    return static_cast<std::size_t>(stream.gcount());
}

void DocumentBytes::RequireFewBytes(std::uint64_t count) const {
    if (!limits.maxDocumentBytes || count <= *limits.maxDocumentBytes) return;
    throw MakeRefusal(Refusal::DocumentTooLong, {std::to_string(*limits.maxDocumentBytes)});
}

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "pmml/DocumentMemory.h"

namespace nbscore {

/// The bytes of a document. What a first parser has taken is kept, so that a second one can read it from the start
/// although a stream cannot be read twice.
///
/// Both ask the limits around each reading of the stream; they throw CancelledError, and VeskException 12 without a
/// place behind the last byte that Limits::maxDocumentBytes allows. The stream stays the caller's.
class SCOREFRAMEWORK_API DocumentBytes {
public:
    DocumentBytes(std::istream& input, const Limits& documentLimits) : stream(input), limits(documentLimits) {}

    /// For the first parser: the bytes from `kept`, a place in what this gave last, and some more behind them; behind
    /// these stands a zero. No more where the document ends.
    /// @param memory what is kept is counted there.
    std::string_view Extend(const char* kept, DocumentMemory& memory);
    /// Frees all that is kept: the first parser has read the document.
    void Forget() { blocks.clear(); }

    /// For the second parser: the next bytes from the document's start, some or at its end none. What was kept is freed
    /// on the way.
    std::size_t Read(char* toFill, std::size_t most);
    /// How many of them it has taken.
    std::uint64_t CountRead() const { return bytesRead; }
    /// False where there is nothing more to read; a stream that fails looks like one that ends.
    bool HasMore() const;

private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size = 0;
        std::size_t capacity = 0;
    };

    std::size_t ReadStream(char* toFill, std::size_t most);
    void RequireFewBytes(std::uint64_t count) const;

    std::istream& stream;
    const Limits& limits;
    /// A byte stands in one of them only.
    std::deque<Block> blocks;
    std::uint64_t bytesKept = 0;
    std::uint64_t bytesRead = 0;
    /// Of the first block.
    std::size_t bytesReadOfBlock = 0;
};

}  // namespace nbscore

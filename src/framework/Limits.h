#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

#include "framework/Export.h"

namespace nbscore {

/// Leaves the work that Limits::isCancelled ended, through the plug-in and through libnbscorehost alike.
class SCOREFRAMEWORK_API CancelledError : public std::runtime_error {
public:
    CancelledError();
    ~CancelledError() override;
    CancelledError(const CancelledError&);
    CancelledError& operator=(const CancelledError&);
};

/// What a caller lets the reading of a document take, and how it ends work that it no longer wants. A refusal names the
/// limit that was met as max-memory or max-document-bytes, which are the command's options too.
struct SCOREFRAMEWORK_API Limits {
    /// Bytes that a document may have, as it is stored. Nothing: as many as fit into memory.
    std::optional<std::uint64_t> maxDocumentBytes;

    /// Bytes of memory that one document may take while it is read: its tree of elements, and beside it the count
    /// tables and categories of the model, at most. Nothing: half of what the process may have (UsableMemory), looked
    /// up at each document.
    std::optional<std::uint64_t> maxMemory;

    /// Asked every few milliseconds by reading a document, by checking it and by scoring, on the threads that work,
    /// several at once perhaps. When it answers true, the work ends with CancelledError, and what was built is freed.
    /// It should go on answering true, and may not throw. Empty: never cancelled.
    ///
    /// It is not asked inside a single call of the regular-expression library, nor while a stream of the caller's own
    /// waits; a document's file is opened and waited for here, and a silent named pipe does not block it.
    std::function<bool()> isCancelled;

    /// maxMemory or its default.
    std::uint64_t GetMemory() const;

    void ThrowIfCancelled() const {
        if (isCancelled && isCancelled()) throw CancelledError();
    }
};

/// Asks, at some of many small steps of work, whether the work is cancelled. Used by one thread at a time.
class LimitWatch {
public:
    /// A step takes about as long as reading an element does, or a line of a table.
    static constexpr std::size_t stepsPerQuestion = 128;

    LimitWatch() = default;
    explicit LimitWatch(Limits watchedLimits) : limits(std::move(watchedLimits)) {}

    /// @param count how many steps were done at once. Throws CancelledError.
    void Step(std::size_t count = 1) {
        steps += count;
        if (steps < stepsPerQuestion) return;
        steps = 0;
        limits.ThrowIfCancelled();
    }
    const Limits& GetLimits() const { return limits; }

private:
    Limits limits;
    std::size_t steps = 0;
};

}  // namespace nbscore

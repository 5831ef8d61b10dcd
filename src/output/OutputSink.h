#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string_view>

namespace nbscore {

/// Where a run's output goes.
class OutputSink {
public:
    virtual ~OutputSink() = default;

    /// Takes bytes over; throws InputOutputError when they cannot be written.
    virtual void Write(std::string_view bytes) = 0;
    /// Passes on what was taken over so far to a reader that may be waiting; throws as Write.
    virtual void Flush() {}
    /// Makes everything written final, at the end of a run that went well; throws InputOutputError otherwise.
    virtual void Commit() = 0;
};

/// What is done when a signal interrupts a call of the system: it may throw, to give up; when it returns, the call is
/// made again. Nothing is done when it is empty.
using OnInterruption = std::function<void()>;

/// What is done before bytes are written, to wait until the file takes some at once; it may throw, to give up. Tells
/// how many it takes. Where it is empty, writing itself waits, and only a signal to the writing thread ends that.
using WaitForRoom = std::function<std::size_t(std::FILE*)>;

/// How a request to stop is noticed while writing waits.
struct OutputWaiting {
    OnInterruption onInterruption;
    WaitForRoom waitForRoom;
};

}  // namespace nbscore

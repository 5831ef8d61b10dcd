#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace nbscore {

/// What is done when a signal interrupts a call of the system: it may throw, to give up; when it returns, the call is
/// made again. Nothing is done when it is empty.
using OnInterruption = std::function<void()>;

/// What is done before bytes are written, to wait until the file takes some at once; it may throw, to give up. Tells
/// how many it takes. Where it is empty, writing itself waits, and nobody but a signal to the writing thread ends that.
using WaitForRoom = std::function<std::size_t(std::FILE*)>;

/// How somebody who wants to stop is heard while writing waits.
struct OutputWaiting {
    OnInterruption onInterruption;
    WaitForRoom waitForRoom;
};

/// Makes a call that reports failure with errno, again and again while signals interrupt it.
/// @param call answers true when it was done.
bool RepeatInterrupted(const std::function<bool()>& call, const OnInterruption& onInterruption);

/// Bytes on their way to a file: gathered, so that small pieces are not each a call of the system.
///
/// The buffer of the C library is not used, because it loses bytes when a signal interrupts it.
class OutputBuffer {
public:
    explicit OutputBuffer(OutputWaiting outputWaiting) : waiting(std::move(outputWaiting)) {}

    /// False, with errno, when writing fails; what was not written is lost then.
    /// @param file where bytes go as soon as there are enough of them.
    bool Write(std::FILE* file, std::string_view bytes);
    /// Writes all that is left. Answers as Write.
    bool Flush(std::FILE* file);

private:
    bool WriteOut(std::FILE* file, std::string_view bytes) const;

    OutputWaiting waiting;
    std::string gathered;
};

}  // namespace nbscore

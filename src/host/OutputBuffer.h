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

/// Makes a call that reports failure with errno, again and again while signals interrupt it.
/// @param call answers true when it was done.
bool RepeatInterrupted(const std::function<bool()>& call, const OnInterruption& onInterruption);

/// Bytes on their way to a file: gathered, so that small pieces are not each a call of the system.
///
/// The buffer of the C library is not used, because it loses bytes when a signal interrupts it.
class OutputBuffer {
public:
    explicit OutputBuffer(OnInterruption whenInterrupted) : onInterruption(std::move(whenInterrupted)) {}

    /// False, with errno, when writing fails; what was not written is lost then.
    /// @param file where bytes go as soon as there are enough of them.
    bool Write(std::FILE* file, std::string_view bytes);
    /// Writes all that is left. Answers as Write.
    bool Flush(std::FILE* file);

private:
    bool WriteOut(std::FILE* file, std::string_view bytes) const;

    OnInterruption onInterruption;
    std::string gathered;
};

}  // namespace nbscore

#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "output/OutputSink.h"

namespace nbscore {

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

#pragma once

#include <chrono>
#include <functional>
#include <ostream>

#include "host/OutputSink.h"

namespace nbscore {

/// What surrounds a run of the command, handed in so that a run needs no process of its own.
struct Console {
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Standard output, which gets nothing but results.
    OutputSink& results;
    /// Standard error: errors, warnings, progress.
    std::ostream& messages;
    bool resultsAreTerminal = false;
    bool messagesAreTerminal = false;
    Clock now = [] { return std::chrono::steady_clock::now(); };
};

}  // namespace nbscore

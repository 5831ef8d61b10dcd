#pragma once

#include <chrono>
#include <functional>
#include <ostream>

#include "output/OutputSink.h"

namespace nbscore {

/// The surroundings of a run, handed in so that a run needs no process of its own.
struct Console {
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Standard output, for results only.
    OutputSink& results;
    /// Standard error: errors, warnings, progress.
    std::ostream& messages;
    bool resultsAreTerminal = false;
    /// The terminal that the messages go to, for a line that is written anew in its place; null where they go
    /// elsewhere.
    std::ostream* messagesTerminal = nullptr;
    Clock now = [] { return std::chrono::steady_clock::now(); };
};

}  // namespace nbscore

#pragma once

#include <string_view>

namespace nbscore {

/// Where a run's output goes.
class OutputSink {
public:
    virtual ~OutputSink() = default;

    /// Takes bytes over; throws InputOutputError when they cannot be written.
    virtual void Write(std::string_view bytes) = 0;
    /// Passes on what was taken over so far to whoever may be waiting for it; throws as Write.
    virtual void Flush() {}
    /// Makes everything written final, at the end of a run that went well; throws InputOutputError otherwise.
    virtual void Commit() = 0;
};

}  // namespace nbscore

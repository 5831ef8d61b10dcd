#pragma once

#include <string_view>

#include "output/OutputBuffer.h"
#include "output/OutputSink.h"

namespace nbscore {

/// The process's standard output, bytes as they are on every system, with every failure (a closed pipe, a full
/// disk) reported. A process that wants to hear of a closed pipe must ignore the signal for it.
class StandardOutput : public OutputSink {
public:
    /// @param waiting what it throws leaves as it is.
    explicit StandardOutput(OutputWaiting waiting = {});
    /// Writes what is left, as far as that goes.
    ~StandardOutput() override;
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    void Write(std::string_view bytes) override;
    void Flush() override;
    void Commit() override;

private:
    OutputBuffer buffer;
};

}  // namespace nbscore

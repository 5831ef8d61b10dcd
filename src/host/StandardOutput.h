#pragma once

#include <string_view>

#include "host/OutputSink.h"

namespace nbscore {

/// The process's standard output, bytes as they are on every system, with every failure (a closed pipe, a full
/// disk) reported. A process that wants to hear of a closed pipe must ignore the signal for it.
class StandardOutput : public OutputSink {
public:
    StandardOutput();

    void Write(std::string_view bytes) override;
    void Commit() override;
};

}  // namespace nbscore

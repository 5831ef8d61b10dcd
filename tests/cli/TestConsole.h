#pragma once

#include <chrono>
#include <sstream>
#include <string>
#include <string_view>

#include "cli/CommandLine.h"
#include "cli/system/Console.h"
#include "output/OutputSink.h"

namespace nbscore::test {

/// Standard output of a command that runs without a process.
class TextSink : public OutputSink {
public:
    void Write(std::string_view bytes) override { text += bytes; }
    void Commit() override { ++commits; }

    std::string text;
    int commits = 0;
};

/// A clock that moves on by the same step each time that somebody looks at it.
class SteppingClock {
public:
    explicit SteppingClock(std::chrono::milliseconds clockStep) : step(clockStep) {}
    std::chrono::steady_clock::time_point operator()() { return time += step; }

private:
    std::chrono::milliseconds step;
    std::chrono::steady_clock::time_point time;
};

/// What a command that runs without a process said.
struct InProcessRun {
    explicit InProcessRun(const std::vector<std::string>& arguments) { Run(arguments); }
    /// With standard error a terminal, and a clock on which every step of the work takes so long.
    InProcessRun(const std::vector<std::string>& arguments, std::chrono::milliseconds step,
                 bool resultsAreTerminal = false) {
        console.messagesTerminal = &messages;
        console.resultsAreTerminal = resultsAreTerminal;
        console.now = SteppingClock(step);
        Run(arguments);
    }

    TextSink results;
    std::ostringstream messages;
    int exitStatus = -1;

private:
    void Run(const std::vector<std::string>& arguments) {
        CommandLine commandLine;
        exitStatus = commandLine.Run(arguments, console);
    }

    Console console{results, messages};
};

}  // namespace nbscore::test

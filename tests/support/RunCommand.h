#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Running a program as a process of its own, as a shell would.

namespace nbscore::test {

struct CommandCall {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    /// What the program reads from its standard input, a pipe.
    std::string standardInput;
    /// Set in addition to the test's own environment.
    std::map<std::string, std::string> environment;
    /// The folder that the program runs in; the test's own when empty.
    std::filesystem::path workingFolder;
    /// Where standard output goes instead of being captured, such as a device.
    std::optional<std::filesystem::path> outputPath;
    /// Standard output is a pipe whose other end is closed already.
    bool outputIsClosedPipe = false;
    /// The program starts without a standard output, so nothing is captured.
    bool outputIsMissing = false;
    /// How many bytes of addresses the program may have; as many as the system gives it when 0, and on
    /// Windows.
    std::uint64_t memoryLimit = 0;
    /// How long it takes until a program that hangs is killed.
    unsigned secondsUntilKilled = 240;
};

struct CommandResult {
    /// What the program returned, or -N when signal N killed it. On Windows some number below 0 when it was killed.
    int exitStatus = 0;
    std::string out;
    std::string err;
};

/// Runs a program to its end, or until its time is up.
CommandResult RunCommand(const CommandCall& call);

/// A program that is running, with the standard input of its call written and its input still open.
class StartedCommand {
public:
    explicit StartedCommand(const CommandCall& call);
    ~StartedCommand();
    StartedCommand(const StartedCommand&) = delete;
    StartedCommand& operator=(const StartedCommand&) = delete;

    void WriteInput(std::string_view text);
    void CloseInput();
    /// Not on Windows, which has no signals between processes.
    void SendSignal(int signal);
    /// Kills it, with no chance to clean up.
    void Kill();
    /// Waits for the program's end. May be called once.
    CommandResult Wait();

private:
    struct Process;
    std::unique_ptr<Process> running;
};

}  // namespace nbscore::test

#include "support/RunCommand.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace nbscore::test {

namespace {

int Require(int answer, const char* what) {
    if (answer < 0) throw std::system_error(errno, std::generic_category(), what);
    return answer;
}

/// A file without a name. Output is captured in files, not in pipes, which would have to be read meanwhile.
int OpenNamelessFile() {
    std::string path = (std::filesystem::temp_directory_path() / "captured-XXXXXX").string();
    const int descriptor = Require(mkostemp(path.data(), O_CLOEXEC), "mkostemp");
    unlink(path.c_str());
    return descriptor;
}

std::array<int, 2> OpenPipe() {
    std::array<int, 2> ends;
    Require(pipe2(ends.data(), O_CLOEXEC), "pipe2");
    return ends;
}

int OpenOutput(const CommandCall& call) {
    if (call.outputPath) return Require(open(call.outputPath->c_str(), O_WRONLY | O_CLOEXEC), "open");
    if (!call.outputIsClosedPipe) return OpenNamelessFile();
    const std::array<int, 2> ends = OpenPipe();
    close(ends[0]);
    return ends[1];
}

std::string ReadAll(int descriptor) {
    std::string text;
    std::array<char, 65536> piece;
    lseek(descriptor, 0, SEEK_SET);
    for (ssize_t count = 0; (count = read(descriptor, piece.data(), piece.size())) > 0;) {
        text.append(piece.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// The child's side: never returns.
[[noreturn]] void Become(const CommandCall& call, int in, int out, int err) {
    // A test may run where signals are ignored, and ignored signals are inherited.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        std::signal(signal, SIG_DFL);
    alarm(call.secondsUntilKilled);
    dup2(in, 0);
    dup2(out, 1);
    dup2(err, 2);
    if (call.outputIsMissing) close(1);
    const rlimit memory = {call.memoryLimit, call.memoryLimit};
    if (call.memoryLimit != 0 && setrlimit(RLIMIT_AS, &memory) != 0) _exit(125);
    if (!call.workingFolder.empty() && chdir(call.workingFolder.c_str()) != 0) _exit(126);
    for (const auto& [name, value] : call.environment)
        setenv(name.c_str(), value.c_str(), 1);
    std::string program = call.program.string();
    std::vector<std::string> arguments = call.arguments;
    std::vector<char*> pointers = {program.data()};
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    _exit(127);
}

}  // namespace

struct StartedCommand::Process {
    int inputEnd = -1;
    int process = -1;
    int outDescriptor = -1;
    int errDescriptor = -1;
};

CommandResult RunCommand(const CommandCall& call) {
    StartedCommand started(call);
    started.CloseInput();
    return started.Wait();
}

StartedCommand::StartedCommand(const CommandCall& call) : running(std::make_unique<Process>()) {
    // A program may end before it has read all of its input.
    std::signal(SIGPIPE, SIG_IGN);
    const std::array<int, 2> input = OpenPipe();
    running->inputEnd = input[1];
    running->outDescriptor = OpenOutput(call);
    running->errDescriptor = OpenNamelessFile();
    running->process = Require(fork(), "fork");
    if (running->process == 0) Become(call, input[0], running->outDescriptor, running->errDescriptor);
    close(input[0]);
    WriteInput(call.standardInput);
}

StartedCommand::~StartedCommand() {
    CloseInput();
    if (running->process > 0) {
        kill(running->process, SIGKILL);
        waitpid(running->process, nullptr, 0);
    }
    close(running->outDescriptor);
    close(running->errDescriptor);
}

void StartedCommand::WriteInput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(running->inputEnd, text.data(), text.size());
        if (count < 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void StartedCommand::CloseInput() {
    if (running->inputEnd >= 0) close(running->inputEnd);
    running->inputEnd = -1;
}

void StartedCommand::SendSignal(int signal) {
    Require(kill(running->process, signal), "kill");
}

void StartedCommand::Kill() {
    SendSignal(SIGKILL);
}

CommandResult StartedCommand::Wait() {
    int status = 0;
    Require(waitpid(running->process, &status, 0), "waitpid");
    running->process = -1;
    CommandResult result;
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    result.out = ReadAll(running->outDescriptor);
    result.err = ReadAll(running->errDescriptor);
    return result;
}

}  // namespace nbscore::test

#include "common/ProcessRun.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <stdexcept>

namespace nbscore::bench {
namespace {

std::string ReadAll(int descriptor) {
    std::string text;
    std::array<char, 4096> part{};
    for (ssize_t size = read(descriptor, part.data(), part.size()); size > 0;
         size = read(descriptor, part.data(), part.size()))
        text.append(part.data(), static_cast<std::size_t>(size));
    return text;
}

[[noreturn]] void BecomeProgram(std::vector<std::string>& words, int output) {
    dup2(output, STDOUT_FILENO);
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers.front(), pointers.data());
    _exit(127);
}

}  // namespace

ProcessRun RunProcess(std::vector<std::string> words) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("cannot make a pipe");
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("cannot start a process");
    if (child == 0) {
        close(ends[0]);
        BecomeProgram(words, ends[1]);
    }
    close(ends[1]);
    ProcessRun run;
    run.output = ReadAll(ends[0]);
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const auto secondsOf = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    run.processorSeconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    run.peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::string command;
        for (const std::string& word : words)
            command += (command.empty() ? "" : " ") + word;
        throw std::runtime_error("this failed: " + command);
    }
    return run;
}

std::filesystem::path GetOwnProgram() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace nbscore::bench

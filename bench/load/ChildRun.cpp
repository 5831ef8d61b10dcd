#include "ChildRun.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <sstream>
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

}  // namespace

ChildRun RunChild(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("cannot make a pipe");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("cannot start a process");
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        std::vector<std::string> words = {"load_benchmark"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execv("/proc/self/exe", pointers.data());
        _exit(127);
    }
    close(ends[1]);
    std::istringstream told(ReadAll(ends[0]));
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    ChildRun run;
    told >> run.seconds >> run.translatorSeconds;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || told.fail())
        throw std::runtime_error("the load \"" + arguments.front() + "\" failed");
    run.peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return run;
}

}  // namespace nbscore::bench

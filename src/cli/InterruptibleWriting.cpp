#include "cli/InterruptibleWriting.h"

#include <cstdio>
#include <limits>

#include "cli/Interrupts.h"

#if !defined(_WIN32)
#include <sys/stat.h>

#include <climits>
#endif

namespace nbscore {
namespace {

constexpr std::size_t allAtOnce = std::numeric_limits<std::size_t>::max();

#if defined(_WIN32)

std::size_t WaitUntilTaken(std::FILE*) {
    return allAtOnce;
}

#else

std::size_t WaitUntilTaken(std::FILE* file) {
    struct stat status = {};
    const int descriptor = fileno(file);
    // What is stored in a file system never waits for anybody.
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return allAtOnce;
    Interrupts::WaitUntilWritable(descriptor);
    return PIPE_BUF;
}

#endif

}  // namespace

OutputWaiting InterruptibleWriting() {
    return {Interrupts::ThrowIfRequested, WaitUntilTaken};
}

}  // namespace nbscore

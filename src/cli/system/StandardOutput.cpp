#include "cli/system/StandardOutput.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include "output/HostError.h"
#include "output/SystemReason.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace nbscore {
namespace {

void LeaveLineEndsAlone() {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
}

[[noreturn]] void ReportFailure() {
    throw InputOutputError("cannot write to standard output: " + GetSystemReason(errno));
}

}  // namespace

StandardOutput::StandardOutput(OutputWaiting waiting) : buffer(std::move(waiting)) {
    LeaveLineEndsAlone();
}

StandardOutput::~StandardOutput() {
    try {
        static_cast<void>(buffer.Flush(stdout));
    } catch (...) {
        // Asked to stop: so be it.
    }
}

void StandardOutput::Write(std::string_view bytes) {
    if (!buffer.Write(stdout, bytes)) ReportFailure();
}

void StandardOutput::Flush() {
    if (!buffer.Flush(stdout)) ReportFailure();
}

void StandardOutput::Commit() {
    Flush();
}

}  // namespace nbscore

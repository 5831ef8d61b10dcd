#include "host/StandardOutput.h"

#include <cerrno>
#include <cstdio>

#include "host/HostError.h"
#include "host/SystemReason.h"

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

StandardOutput::StandardOutput() {
    LeaveLineEndsAlone();
}

void StandardOutput::Write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) ReportFailure();
}

void StandardOutput::Commit() {
    if (std::fflush(stdout) != 0) ReportFailure();
}

}  // namespace nbscore

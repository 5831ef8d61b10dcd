#include "cli/system/InterruptibleOutput.h"

#include <cerrno>
#include <cstdio>
#include <limits>
#include <string_view>
#include <utility>

#include "cli/system/Interrupts.h"
#include "output/HostError.h"
#include "output/MessageText.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <sys/stat.h>

#include <climits>
#endif

namespace nbscore {
namespace {

constexpr std::size_t allAtOnce = std::numeric_limits<std::size_t>::max();

#ifdef _WIN32

std::size_t WaitUntilTaken(std::FILE*) {
    return allAtOnce;
}

void LeaveLineEndsAlone() {
    _setmode(_fileno(stdout), _O_BINARY);
}

#else

std::size_t WaitUntilTaken(std::FILE* file) {
    struct stat status = {};
    const int descriptor = fileno(file);
    // Writing to a file in a file system never waits for a reader.
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return allAtOnce;
    Interrupts::WaitUntilWritable(descriptor);
    return PIPE_BUF;
}

void LeaveLineEndsAlone() {}

#endif

[[noreturn]] void ReportFailure() {
    throw InputOutputError("cannot write to standard output: " + GetSystemReason(errno));
}

}  // namespace

OutputWaiting InterruptibleWriting() {
    return {Interrupts::ThrowIfRequested, WaitUntilTaken};
}

StandardOutput::StandardOutput(OutputWaiting waiting) : buffer(std::move(waiting)) {
    LeaveLineEndsAlone();
}

StandardOutput::~StandardOutput() {
    try {
        static_cast<void>(buffer.Flush(stdout));
    } catch (...) {
        // A request to stop: nothing more is to be written.
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

SinkStream::Buffer::int_type SinkStream::Buffer::overflow(int_type character) {
    sync();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

int SinkStream::Buffer::sync() {
    Interrupts::ThrowIfRequested();
    sink.Write(std::string_view(pbase(), static_cast<std::size_t>(pptr() - pbase())));
    setp(piece.data(), piece.data() + piece.size());
    return 0;
}

}  // namespace nbscore

#include "cli/system/InterruptibleOutput.h"

#include <cstdio>
#include <limits>
#include <string_view>

#include "cli/system/Interrupts.h"

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

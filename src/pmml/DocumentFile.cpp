#include "pmml/DocumentFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "pmml/RefusalTable.h"

#ifdef _WIN32
#include <fstream>
#else
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#endif

namespace nbscore {
namespace {

VeskException UnreadableFile(const std::string& path, std::errc fault) {
    VeskException refusal = MakeRefusal(Refusal::FileUnreadable, {path, std::make_error_code(fault).message()});
    refusal.SetSource(path);
    return refusal;
}

#ifdef _WIN32

/// Null, with errno, when that is not possible.
std::unique_ptr<std::streambuf> OpenFile(const std::filesystem::path& path, const Limits&) {
    auto buffer = std::make_unique<std::filebuf>();
    if (buffer->open(path, std::ios::in | std::ios::binary) == nullptr) return nullptr;
    return buffer;
}

#else

/// Reads a file as the system does it, because a standard stream cannot be called away from a pipe that nothing comes
/// from.
class FileBuffer : public std::streambuf {
public:
    FileBuffer(int openDescriptor, const Limits& fileLimits) : descriptor(openDescriptor), limits(fileLimits) {}
    ~FileBuffer() override { close(descriptor); }
    FileBuffer(const FileBuffer&) = delete;
    FileBuffer& operator=(const FileBuffer&) = delete;

protected:
    /// What it throws makes the stream a broken one.
    int_type underflow() override {
        while (true) {
            WaitForBytes();
            const ssize_t count = read(descriptor, bytes.data(), bytes.size());
            if (count == 0) return traits_type::eof();
            if (count > 0) {
                setg(bytes.data(), bytes.data(), bytes.data() + count);
                return traits_type::to_int_type(bytes.front());
            }
            if (errno != EINTR && errno != EAGAIN) throw std::system_error(errno, std::generic_category());
        }
    }

private:
    /// A regular file is always ready.
    void WaitForBytes() const {
        constexpr int millisecondsBetweenQuestions = 50;
        pollfd waited = {descriptor, POLLIN, 0};
        do {
            limits.ThrowIfCancelled();
        } while (poll(&waited, 1, limits.isCancelled ? millisecondsBetweenQuestions : -1) <= 0);
    }

    const int descriptor;
    const Limits limits;
    std::array<char, 65536> bytes;
};

/// Null, with errno, when that is not possible.
std::unique_ptr<std::streambuf> OpenFile(const std::filesystem::path& path, const Limits& limits) {
    std::error_code ignored;
    // Opened in this way, a named pipe does not wait for its writer; reading does.
    const int nonBlocking = std::filesystem::is_fifo(path, ignored) ? O_NONBLOCK : 0;
    int descriptor = -1;
    while ((descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | nonBlocking)) < 0 && errno == EINTR)
        limits.ThrowIfCancelled();
    if (descriptor < 0) return nullptr;
    try {
        return std::make_unique<FileBuffer>(descriptor, limits);
    } catch (...) {
        close(descriptor);
        throw;
    }
}

#endif

}  // namespace

DocumentFile::DocumentFile(std::string filePath, const Limits& limits) : path(std::move(filePath)) {
    // A zero would end the name early for the system, and another file be read than the one that was named.
    if (path.find('\0') != std::string::npos) throw UnreadableFile(path, std::errc::invalid_argument);
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    // Opening a directory succeeds on some systems and only reading it fails, so it is asked for by name.
    std::error_code ignored;
    if (std::filesystem::is_directory(native, ignored)) throw UnreadableFile(path, std::errc::is_a_directory);
    errno = 0;
    buffer = OpenFile(native, limits);
    if (buffer == nullptr) throw UnreadableFile(path, errno == 0 ? std::errc::io_error : static_cast<std::errc>(errno));
    stream = std::make_unique<std::istream>(buffer.get());
}

DocumentFile::~DocumentFile() = default;

void DocumentFile::RequireUnbroken() const {
    if (stream->bad()) throw UnreadableFile(path, std::errc::io_error);
}

}  // namespace nbscore

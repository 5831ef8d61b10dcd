#include "cli/system/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "cli/system/Interrupts.h"
#include "output/HostError.h"
#include "output/MessageText.h"

#if defined(_WIN32)
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace nbscore {
namespace {

#if defined(_WIN32)

int OpenFile(const std::filesystem::path& path) {
    const int number = _wopen(path.c_str(), _O_RDONLY | _O_BINARY);
    std::error_code ignored;
    if (number < 0 && std::filesystem::is_directory(path, ignored)) errno = EISDIR;
    return number;
}

auto ReadBytes(int number, char* bytes, std::size_t size) {
    return _read(number, bytes, static_cast<unsigned>(size));
}

#else

int OpenFile(const std::filesystem::path& path) {
    std::error_code ignored;
    // Opened in this way, a named pipe does not wait for its writer; reading does, and notices a request to stop.
    const int nonBlocking = std::filesystem::is_fifo(path, ignored) ? O_NONBLOCK : 0;
    int number = -1;
    while ((number = open(path.c_str(), O_RDONLY | O_CLOEXEC | nonBlocking)) < 0 && errno == EINTR)
        Interrupts::ThrowIfRequested();
    return number;
}

auto ReadBytes(int number, char* bytes, std::size_t size) {
    return read(number, bytes, size);
}

#endif

[[noreturn]] void ThrowLastError(const std::string& name) {
    const int errorNumber = errno;
    throw InputOutputError("cannot read " + name + ": " + GetSystemReason(errorNumber));
}

}  // namespace

Descriptor Descriptor::Open(const std::filesystem::path& path, const std::string& name) {
    const int number = OpenFile(path);
    if (number < 0) ThrowLastError(name);
    return Descriptor(number, true);
}

Descriptor Descriptor::StandardInput() {
#if defined(_WIN32)
    _setmode(0, _O_BINARY);
#endif
    return Descriptor(0, false);
}

Descriptor::~Descriptor() {
    if (owned) close(number);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : number(other.number), owned(other.owned) {
    other.owned = false;
}

std::size_t Descriptor::Read(char* bytes, std::size_t size, const std::string& name) const {
    while (true) {
        Interrupts::WaitUntilReadable(number);
        const auto count = ReadBytes(number, bytes, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR && errno != EAGAIN) ThrowLastError(name);
    }
}

std::optional<std::uint64_t> Descriptor::GetRemainingSize() const {
#if defined(_WIN32)
    struct _stat64 status = {};
    if (_fstat64(number, &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG) return std::nullopt;
    const auto position = _lseeki64(number, 0, SEEK_CUR);
#else
    struct stat status = {};
    if (fstat(number, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const auto position = lseek(number, 0, SEEK_CUR);
#endif
    if (position < 0 || position > status.st_size) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size - position);
}

bool IsTerminal(int descriptor) {
    return isatty(descriptor) != 0;
}

bool IsStandardInput(const std::filesystem::path& path) {
#if defined(_WIN32)
    // The status of a file has nothing here that tells it from other files.
    const int number = OpenFile(path);
    if (number < 0) return false;
    BY_HANDLE_FILE_INFORMATION file = {};
    BY_HANDLE_FILE_INFORMATION input = {};
    const bool areKnown = GetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(number)), &file) != 0 &&
                          GetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(0)), &input) != 0;
    close(number);
    return areKnown && file.dwVolumeSerialNumber == input.dwVolumeSerialNumber &&
           file.nFileIndexHigh == input.nFileIndexHigh && file.nFileIndexLow == input.nFileIndexLow;
#else
    struct stat file = {};
    struct stat input = {};
    return stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode) && fstat(0, &input) == 0 &&
           file.st_dev == input.st_dev && file.st_ino == input.st_ino;
#endif
}

void OpenMissingStandardStreams() {
#if !defined(_WIN32)
    for (const int stream : {0, 1, 2}) {
        if (fcntl(stream, F_GETFD) >= 0) continue;
        // The lowest free number is taken, which is this one. Opened the wrong way round, so that its use
        // fails.
        [[maybe_unused]] const int number = open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY);
    }
#endif
}

DescriptorBuffer::int_type DescriptorBuffer::underflow() {
    const std::size_t count = descriptor.Read(bytes.data(), bytes.size(), name);
    setg(bytes.data(), bytes.data(), bytes.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(bytes.front());
}

}  // namespace nbscore

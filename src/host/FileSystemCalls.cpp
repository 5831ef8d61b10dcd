#include "host/FileSystemCalls.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace nbscore {
namespace {

bool CloseAndSay(std::FILE* file) {
    if (file == nullptr) return false;
    static_cast<void>(std::fclose(file));
    return true;
}

}  // namespace

#ifdef _WIN32

std::FILE* CreateNewFile(const std::filesystem::path& path) {
    const int descriptor =
        _wopen(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

std::FILE* OpenForWriting(const std::filesystem::path& path) {
    return _wfopen(path.c_str(), L"wb");
}

bool MayWriteTo(const std::filesystem::path& path) {
    return CloseAndSay(_wfopen(path.c_str(), L"r+b"));
}

std::ptrdiff_t WriteSomeBytes(std::FILE* file, std::string_view bytes) {
    constexpr std::size_t mostAtOnce = std::size_t{1} << 30;  // the call counts in 32 bits
    const int count = _write(_fileno(file), bytes.data(), static_cast<unsigned>(std::min(bytes.size(), mostAtOnce)));
    // A pipe that nobody reads any more has an error of its own there, for which the C library has no number.
    constexpr unsigned long nobodyReads = 232;
    if (count < 0 && _doserrno == nobodyReads) errno = EPIPE;
    return count;
}

void StartSyncToDisk(std::FILE*, std::uint64_t, std::uint64_t) {}

bool SyncToDisk(std::FILE* file) {
    return _commit(_fileno(file)) == 0;
}

#else

std::FILE* CreateNewFile(const std::filesystem::path& path) {
    constexpr mode_t asTheUserWants = 0666;  // less what the process's mask takes away
    const int descriptor = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, asTheUserWants);
    return descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
}

std::FILE* OpenForWriting(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "wb");
}

bool MayWriteTo(const std::filesystem::path& path) {
    return CloseAndSay(std::fopen(path.c_str(), "r+b"));
}

std::ptrdiff_t WriteSomeBytes(std::FILE* file, std::string_view bytes) {
    return write(fileno(file), bytes.data(), bytes.size());
}

void StartSyncToDisk(std::FILE* file, std::uint64_t begin, std::uint64_t size) {
#ifdef SYNC_FILE_RANGE_WRITE
    // What does not reach the disk is told when all is synchronized.
    static_cast<void>(
        sync_file_range(fileno(file), static_cast<off_t>(begin), static_cast<off_t>(size), SYNC_FILE_RANGE_WRITE));
#else
    static_cast<void>(file), static_cast<void>(begin), static_cast<void>(size);
#endif
}

bool SyncToDisk(std::FILE* file) {
    return fsync(fileno(file)) == 0;
}

#endif

}  // namespace nbscore

#include "output/FileSystemCalls.h"

#ifdef _WIN32
#include <io.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace nbscore {

#ifdef _WIN32

std::FILE* OpenForWriting(const std::filesystem::path& path) {
    return _wfopen(path.c_str(), L"wb");
}

bool LeadsToTerminal(std::FILE* file) {
    return _isatty(_fileno(file)) != 0;
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

std::FILE* OpenForWriting(const std::filesystem::path& path) {
    // Systems that protect folders of everybody from the named pipes of others do so where a file could be created.
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_NOCTTY | O_CLOEXEC, 0600);
    if (descriptor < 0) return nullptr;
    struct stat status = {};
    const bool isRegular = fstat(descriptor, &status) != 0 || S_ISREG(status.st_mode);
    std::FILE* const file = isRegular ? nullptr : fdopen(descriptor, "wb");
    if (file != nullptr) return file;
    const int reason = isRegular ? EEXIST : errno;
    close(descriptor);
    errno = reason;
    return nullptr;
}

bool LeadsToTerminal(std::FILE* file) {
    return isatty(fileno(file)) != 0;
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

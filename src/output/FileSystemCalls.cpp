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
#include <optional>
#include <string>
#endif
#ifdef __linux__
#include <sys/xattr.h>
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
    // A pipe without a reader has an error of its own there, for which the C library has no number.
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
    // What does not reach the disk is reported when everything is synchronized.
    static_cast<void>(
        sync_file_range(fileno(file), static_cast<off_t>(begin), static_cast<off_t>(size), SYNC_FILE_RANGE_WRITE));
#else
    static_cast<void>(file), static_cast<void>(begin), static_cast<void>(size);
#endif
}

bool SyncToDisk(std::FILE* file) {
    return fsync(fileno(file)) == 0;
}

namespace {

#ifdef __linux__

/// What a call that fills a buffer gives; nothing, with errno, when it fails.
/// @param call answers the size that it needs when the buffer is empty.
template <typename Call>
std::optional<std::string> Fetch(Call call) {
    const ssize_t size = call(nullptr, 0);
    if (size <= 0) return size < 0 ? std::nullopt : std::optional(std::string());
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const ssize_t fetched = call(bytes.data(), bytes.size());
    if (fetched < 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(fetched));
    return bytes;
}

std::optional<std::string> GetAttribute(int file, const char* name) {
    return Fetch([file, name](char* bytes, std::size_t size) { return fgetxattr(file, name, bytes, size); });
}

/// As far as possible: no access depends on them.
void PassOnUserAttributes(int from, int to) {
    const std::string names =
        Fetch([from](char* bytes, std::size_t size) { return flistxattr(from, bytes, size); }).value_or("");
    for (std::size_t begin = 0; begin < names.size();) {
        const std::string name = names.c_str() + begin;
        begin += name.size() + 1;
        if (!name.starts_with("user.")) continue;
        const std::optional<std::string> value = GetAttribute(from, name.c_str());
        if (value) static_cast<void>(fsetxattr(to, name.c_str(), value->data(), value->size(), 0));
    }
}

constexpr const char* accessList = "system.posix_acl_access";

bool IsNoneOrUnknown(int error) {
    return error == ENODATA || error == EOPNOTSUPP;
}

/// A new file may have got a list from its folder.
bool RemoveAccessList(int file) {
    return fremovexattr(file, accessList) == 0 || IsNoneOrUnknown(errno);
}

bool PassOnAccessList(int from, int to) {
    const std::optional<std::string> list = GetAttribute(from, accessList);
    if (list) return fsetxattr(to, accessList, list->data(), list->size(), 0) == 0;
    return IsNoneOrUnknown(errno) && RemoveAccessList(to);
}

#else

void PassOnUserAttributes(int, int) {}

bool RemoveAccessList(int) {
    return true;
}

bool PassOnAccessList(int, int) {
    return true;
}

#endif

/// True when the new file has the group of the other then, and its owner where that was allowed.
bool PassOnOwnerAndGroup(const struct stat& from, int to) {
    struct stat own = {};
    if (fstat(to, &own) != 0) return false;
    if (own.st_uid == from.st_uid && own.st_gid == from.st_gid) return true;
    if (fchown(to, from.st_uid, from.st_gid) == 0 || own.st_gid == from.st_gid) return true;
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    return fchown(to, sameOwner, from.st_gid) == 0;
}

/// The permissions of the owner, and for everybody else what both the group and others had.
mode_t WithoutGroup(mode_t permissions) {
    const mode_t shared = permissions >> 3 & permissions & 07;
    return (permissions & 0700) | shared << 3 | shared;
}

}  // namespace

bool PassOnAttributes(int from, int to) {
    struct stat earlier = {};
    if (fstat(from, &earlier) != 0) return false;
    PassOnUserAttributes(from, to);  // while the file is the user's own
    mode_t permissions = earlier.st_mode & 0777;
    if (!PassOnOwnerAndGroup(earlier, to) || !PassOnAccessList(from, to)) {
        permissions = WithoutGroup(permissions);
        static_cast<void>(RemoveAccessList(to));
    }
    return fchmod(to, permissions) == 0;
}

#endif

}  // namespace nbscore

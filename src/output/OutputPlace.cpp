#include "output/OutputPlace.h"

#include <cerrno>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#endif

#include "output/FileSystemCalls.h"

namespace nbscore {
namespace {

namespace fs = std::filesystem;

constexpr int maxLinks = 40;

fs::path MakeTemporaryName() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::random_device random;
    std::string name = ".nbscore-";
    for (int i = 0; i < 16; ++i) {
        name += digits[random() % digits.size()];
    }
    return name + ".tmp";
}

/// Creates a file under a name that is still free.
/// @param create answers a descriptor, or -1 with errno.
template <typename Create>
int CreateUnderNewName(fs::path& name, Create create) {
    constexpr int maxAttempts = 100;
    for (int i = 0; i < maxAttempts; ++i) {
        name = MakeTemporaryName();
        const int descriptor = create(name);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

}  // namespace

#ifdef _WIN32

namespace {

/// Says with errno what went wrong.
bool Report(const std::error_code& error) {
    const std::error_condition condition = error.default_error_condition();
    errno = condition.category() == std::generic_category() ? condition.value() : EIO;
    return !error;
}

}  // namespace

OutputPlace::~OutputPlace() = default;

bool OutputPlace::Find(const fs::path& destination) {
    path = destination;
    for (int i = 0; i < maxLinks; ++i) {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / next;
    }
    return true;
}

bool OutputPlace::MayBeReplaced() const {
    std::FILE* const file = _wfopen(path.c_str(), L"r+b");
    return file != nullptr && std::fclose(file) == 0;
}

std::FILE* OutputPlace::CreateBeside(fs::path& name) const {
    const int descriptor = CreateUnderNewName(name, [this](const fs::path& candidate) {
        return _wopen((path.parent_path() / candidate).c_str(),
                      _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    });
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

bool OutputPlace::IsNameOf(std::FILE*, const fs::path&) const {
    return true;  // an open file cannot be removed or renamed
}

bool OutputPlace::PrepareToReplace(std::FILE*) const {
    return true;
}

bool OutputPlace::Replace(const fs::path& name) const {
    std::error_code error;
    fs::rename(path.parent_path() / name, path, error);
    return Report(error);
}

bool OutputPlace::Sync() const {
    return true;
}

void OutputPlace::Remove(const fs::path& name) const noexcept {
    // Nothing more can be done about a file that cannot be removed.
    try {
        std::error_code ignored;
        fs::remove(path.parent_path() / name, ignored);
    } catch (const std::bad_alloc&) {
    }
}

#else

namespace {

/// A descriptor of the system, closed in the end.
class OpenDescriptor {
public:
    explicit OpenDescriptor(int descriptor) : number(descriptor) {}
    ~OpenDescriptor() {
        if (number >= 0) close(number);
    }
    OpenDescriptor(const OpenDescriptor&) = delete;
    OpenDescriptor& operator=(const OpenDescriptor&) = delete;

    bool IsOpen() const { return number >= 0; }
    int Get() const { return number; }

private:
    int number;
};

int OpenFolder(int from, const fs::path& path) {
    const char* const name = path.empty() ? "." : path.c_str();
    const int descriptor = openat(from, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
#ifdef O_PATH
    // Files can be made in a folder that may not be listed.
    if (descriptor < 0 && errno == EACCES) return openat(from, name, O_PATH | O_DIRECTORY | O_CLOEXEC);
#endif
    return descriptor;
}

/// Whether a link was made by somebody who has a say in what the user does. In a folder where everybody may make
/// files and nobody may take those of others away, a link that was looked at here is the one that is followed then.
bool MayFollow(int folder, const struct stat& link) {
    struct stat around = {};
    if (fstat(folder, &around) != 0) return false;
    const bool isForEverybody = (around.st_mode & S_ISVTX) != 0 && (around.st_mode & S_IWOTH) != 0;
    if (!isForEverybody || link.st_uid == geteuid() || link.st_uid == around.st_uid) return true;
    errno = EACCES;
    return false;
}

/// Opens the file that is to be replaced, which must be a regular one.
int OpenExisting(int folder, const fs::path& name) {
    constexpr int waitingForNobody = O_NONBLOCK | O_NOCTTY;
    const int descriptor = openat(folder, name.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | waitingForNobody);
    struct stat status = {};
    if (descriptor < 0 || (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))) return descriptor;
    close(descriptor);
    errno = EEXIST;
    return -1;
}

/// Creates a file that was not there, whatever stands under its name.
int CreateNew(int folder, const fs::path& name, mode_t mode) {
    return openat(folder, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, mode);
}

/// Gives a file the permissions that any new file gets here. What the process's mask and the folder take away is seen
/// from an empty file: to ask for the mask is to change it, for every thread.
bool SetPermissionsOfNewFile(int folder, int file) {
    constexpr mode_t forEverybody = 0666;
    fs::path name;
    const OpenDescriptor sample(CreateUnderNewName(
        name, [folder](const fs::path& candidate) { return CreateNew(folder, candidate, forEverybody); }));
    if (!sample.IsOpen()) return false;
    struct stat status = {};
    const bool isKnown = fstat(sample.Get(), &status) == 0;
    const int reason = errno;
    unlinkat(folder, name.c_str(), 0);
    errno = reason;
    return isKnown && fchmod(file, status.st_mode & forEverybody) == 0;
}

}  // namespace

OutputPlace::~OutputPlace() {
    if (folder >= 0) close(folder);
}

bool OutputPlace::Find(const fs::path& destination) {
    path = destination;
    fs::path step = destination;
    for (int i = 0; i <= maxLinks; ++i) {
        const int next = OpenFolder(folder < 0 ? AT_FDCWD : folder, step.parent_path());
        if (next < 0) return false;
        if (folder >= 0) close(folder);
        folder = next;

        const fs::path name = step.filename();
        struct stat status = {};
        if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return errno == ENOENT;
        if (!S_ISLNK(status.st_mode)) return true;
        if (!MayFollow(folder, status)) return false;
        std::array<char, PATH_MAX> target;
        const ssize_t size = readlinkat(folder, name.c_str(), target.data(), target.size());
        if (size < 0) return false;
        step = std::string(target.data(), static_cast<std::size_t>(size));
        path = path.parent_path() / step;
    }
    errno = ELOOP;
    return false;
}

bool OutputPlace::MayBeReplaced() const {
    return OpenDescriptor(OpenExisting(folder, path.filename())).IsOpen();
}

std::FILE* OutputPlace::CreateBeside(fs::path& name) const {
    constexpr mode_t forOneself = 0600;
    const int descriptor = CreateUnderNewName(
        name, [this](const fs::path& candidate) { return CreateNew(folder, candidate, forOneself); });
    std::FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
    if (descriptor < 0 || file != nullptr) return file;
    const int reason = errno;
    close(descriptor);
    Remove(name);
    errno = reason;
    return nullptr;
}

bool OutputPlace::IsNameOf(std::FILE* file, const fs::path& name) const {
    struct stat named = {};
    struct stat open = {};
    return fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && fstat(fileno(file), &open) == 0 &&
           named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

bool OutputPlace::PrepareToReplace(std::FILE* file) const {
    const OpenDescriptor existing(OpenExisting(folder, path.filename()));
    if (existing.IsOpen()) return PassOnAttributes(existing.Get(), fileno(file));
    return errno == ENOENT && SetPermissionsOfNewFile(folder, fileno(file));
}

bool OutputPlace::Replace(const fs::path& name) const {
    return renameat(folder, name.c_str(), folder, path.filename().c_str()) == 0;
}

bool OutputPlace::Sync() const {
    if (fsync(folder) == 0) return true;
    // There are file systems that cannot, and a folder that may not be listed is not open for it.
    return errno == EINVAL || errno == EBADF;
}

void OutputPlace::Remove(const fs::path& name) const noexcept {
    unlinkat(folder, name.c_str(), 0);  // nothing more can be done about a file that cannot be removed
}

#endif

}  // namespace nbscore

#include "host/OutputFile.h"

#include <cerrno>
#include <cstdint>
#include <random>
#include <system_error>
#include <utility>

#include "host/FileSystemCalls.h"
#include "host/HostError.h"
#include "host/PathText.h"
#include "host/SystemReason.h"

namespace nbscore {
namespace {

namespace fs = std::filesystem;

/// Enough that the disk has long pieces to write, and little is left in the end.
constexpr std::uint64_t bytesToSyncAtOnce = std::uint64_t{8} << 20;

/// A name that nobody can foresee, so that nobody can lie in wait at it.
fs::path MakeTemporaryName() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::random_device random;
    std::string name = ".nbscore-";
    for (int i = 0; i < 16; ++i) {
        name += digits[random() % digits.size()];
    }
    return name + ".tmp";
}

/// Where a chain of symbolic links ends, whether or not there is a file. Gives up, and answers with the link it
/// got to, where links lead in a circle.
fs::path FollowLinks(fs::path path) {
    constexpr int maxLinks = 40;
    for (int i = 0; i < maxLinks; ++i) {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error) break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

}  // namespace

OutputFile::OutputFile(const fs::path& destination, OutputWaiting waiting)
    : finalPath(destination), onInterruption(waiting.onInterruption), buffer(std::move(waiting)) {
    std::error_code error;
    const fs::file_status status = fs::status(destination, error);
    switch (status.type()) {
        case fs::file_type::none:
            Fail(error.message());
        case fs::file_type::directory:
            Fail("it is a folder");
        case fs::file_type::regular:
        case fs::file_type::not_found:
            OpenBeside(status);
            break;
        default:
            OpenDirectly();
    }
}

OutputFile::~OutputFile() {
    if (file != nullptr) static_cast<void>(std::fclose(file));
    RemoveTemporary();
}

void OutputFile::OpenDirectly() {
    // Opening a named pipe waits for its reader, and a signal ends the wait.
    const auto open = [this] {
        file = OpenForWriting(finalPath);
        return file != nullptr;
    };
    if (!RepeatInterrupted(open, onInterruption)) Fail(GetSystemReason(errno));
}

void OutputFile::OpenBeside(const fs::file_status& existing) {
    const bool replaces = existing.type() == fs::file_type::regular;
    if (replaces && !MayWriteTo(finalPath)) Fail(GetSystemReason(errno));
    finalPath = FollowLinks(finalPath);
    if (!finalPath.has_filename()) Fail("it names no file");
    CreateTemporary();
    if (!replaces) return;
    std::error_code error;
    fs::permissions(temporaryPath, existing.permissions(), error);
    if (error) Fail(error.message());
}

void OutputFile::CreateTemporary() {
    constexpr int maxAttempts = 100;
    for (int i = 0; i < maxAttempts && file == nullptr; ++i) {
        const fs::path candidate = finalPath.parent_path() / MakeTemporaryName();
        file = CreateNewFile(candidate);
        if (file != nullptr) temporaryPath = candidate;
        if (file == nullptr && errno != EEXIST) break;
    }
    if (file == nullptr) Fail(GetSystemReason(errno));
}

/// A file that is to be on the disk when it appears is brought there bit by bit.
void OutputFile::Write(std::string_view bytes) {
    if (!buffer.Write(file, bytes)) Fail(GetSystemReason(errno));
    written += bytes.size();
    if (temporaryPath.empty() || written - syncStarted < bytesToSyncAtOnce) return;
    StartSyncToDisk(file, syncStarted, written - syncStarted);
    syncStarted = written;
}

/// Nobody can be waiting for a file that appears only when it is whole.
void OutputFile::Flush() {
    if (temporaryPath.empty() && !buffer.Flush(file)) Fail(GetSystemReason(errno));
}

void OutputFile::Commit() {
    const bool direct = temporaryPath.empty();
    if (!buffer.Flush(file)) Fail(GetSystemReason(errno));
    const auto sync = [this] { return SyncToDisk(file); };
    if (!direct && !RepeatInterrupted(sync, onInterruption)) Fail(GetSystemReason(errno));
    Close();
    if (direct) return;
    std::error_code error;
    fs::rename(temporaryPath, finalPath, error);
    if (error) Fail(error.message());
    temporaryPath.clear();
}

void OutputFile::Close() {
    std::FILE* const closing = file;
    file = nullptr;
    if (std::fclose(closing) != 0) Fail(GetSystemReason(errno));
}

void OutputFile::RemoveTemporary() noexcept {
    if (temporaryPath.empty()) return;
    std::error_code ignored;  // nothing more can be done about a file that does not go
    fs::remove(temporaryPath, ignored);
    temporaryPath.clear();
}

/// Cleans up itself: a constructor that throws has no destructor run.
void OutputFile::Fail(const std::string& reason) {
    if (file != nullptr) static_cast<void>(std::fclose(file));
    file = nullptr;
    RemoveTemporary();
    throw InputOutputError("cannot write " + ToUtf8(finalPath) + ": " + reason);
}

}  // namespace nbscore

#include "output/OutputFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

#include "output/FileSystemCalls.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "output/OutputBuffer.h"
#include "output/OutputPlace.h"

namespace nbscore {
namespace {

namespace fs = std::filesystem;

/// Large enough for the disk to write long pieces, and small enough that little is left in the end.
constexpr std::uint64_t bytesToSyncAtOnce = std::uint64_t{8} << 20;

}  // namespace

/// A file from its opening to its commit.
class OutputFile::Writing {
public:
    Writing(const fs::path& destination, OutputWaiting waiting);
    ~Writing();
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

    bool IsTerminal() const { return LeadsToTerminal(file); }
    fs::path GetTemporaryPath() const { return IsDirect() ? fs::path() : name.parent_path() / temporaryName; }
    void Write(std::string_view bytes);
    void Flush();
    void Commit();

private:
    void OpenDirectly();
    void OpenBeside(bool replaces);
    void TakePlace();
    void Close();
    void RemoveTemporary() noexcept;
    [[noreturn]] void Fail(const std::string& reason);
    bool IsDirect() const { return temporaryName.empty(); }

    /// What errors call the file.
    fs::path name;
    OutputPlace place;
    fs::path temporaryName;  // empty when written to directly, and once it has taken its place
    std::FILE* file = nullptr;
    OnInterruption onInterruption;
    OutputBuffer buffer;
    /// How much was handed in; the last of it may wait in the buffer.
    std::uint64_t written = 0;
    /// Up to where the system was asked to bring the file to the disk.
    std::uint64_t syncStarted = 0;
};

OutputFile::Writing::Writing(const fs::path& destination, OutputWaiting waiting)
    : name(destination), onInterruption(waiting.onInterruption), buffer(std::move(waiting)) {
    std::error_code error;
    const fs::file_status status = fs::status(destination, error);
    switch (status.type()) {
        case fs::file_type::none:
            Fail(error.message());
        case fs::file_type::directory:
            Fail("it is a folder");
        case fs::file_type::regular:
        case fs::file_type::not_found:
            OpenBeside(status.type() == fs::file_type::regular);
            break;
        default:
            OpenDirectly();
    }
}

OutputFile::Writing::~Writing() {
    if (file != nullptr) static_cast<void>(std::fclose(file));
    RemoveTemporary();
}

void OutputFile::Writing::OpenDirectly() {
    // Opening a named pipe waits for its reader, and a signal ends the wait.
    const auto open = [this] {
        file = OpenForWriting(name);
        return file != nullptr;
    };
    if (!RepeatInterrupted(open, onInterruption)) Fail(GetSystemReason(errno));
}

/// A file that may not be written to is reported before the work begins, and checked again when it is done.
void OutputFile::Writing::OpenBeside(bool replaces) {
    if (!place.Find(name)) Fail(GetSystemReason(errno));
    name = place.GetPath();
    if (!name.has_filename()) Fail("it names no file");
    if (replaces && !place.MayBeReplaced()) Fail(GetSystemReason(errno));
    file = place.CreateBeside(temporaryName);
    if (file == nullptr) {
        temporaryName.clear();
        Fail(GetSystemReason(errno));
    }
}

/// A file that must be on the disk when it appears is brought there piece by piece.
void OutputFile::Writing::Write(std::string_view bytes) {
    if (!buffer.Write(file, bytes)) Fail(GetSystemReason(errno));
    written += bytes.size();
    if (IsDirect() || written - syncStarted < bytesToSyncAtOnce) return;
    StartSyncToDisk(file, syncStarted, written - syncStarted);
    syncStarted = written;
}

/// No reader waits for a file that appears only when it is whole.
void OutputFile::Writing::Flush() {
    if (IsDirect() && !buffer.Flush(file)) Fail(GetSystemReason(errno));
}

void OutputFile::Writing::Commit() {
    if (!buffer.Flush(file)) Fail(GetSystemReason(errno));
    if (IsDirect()) {
        Close();
    } else {
        TakePlace();
    }
}

void OutputFile::Writing::TakePlace() {
    if (!place.PrepareToReplace(file)) Fail(GetSystemReason(errno));
    const auto sync = [this] { return SyncToDisk(file); };
    if (!RepeatInterrupted(sync, onInterruption)) Fail(GetSystemReason(errno));
    if (!place.IsNameOf(file, temporaryName)) Fail("somebody took away " + ToUtf8(temporaryName));
    Close();
    if (!place.Replace(temporaryName)) Fail(GetSystemReason(errno));
    temporaryName.clear();
    // The file is in its place now: too late to stop.
    const auto syncFolder = [this] { return place.Sync(); };
    if (!RepeatInterrupted(syncFolder, {})) Fail(GetSystemReason(errno));
}

void OutputFile::Writing::Close() {
    std::FILE* const closing = file;
    file = nullptr;
    if (std::fclose(closing) != 0) Fail(GetSystemReason(errno));
}

void OutputFile::Writing::RemoveTemporary() noexcept {
    if (IsDirect()) return;
    place.Remove(temporaryName);
    temporaryName.clear();
}

/// Cleans up itself: a constructor that throws has no destructor run.
void OutputFile::Writing::Fail(const std::string& reason) {
    if (file != nullptr) static_cast<void>(std::fclose(file));
    file = nullptr;
    RemoveTemporary();
    throw InputOutputError("cannot write " + ToUtf8(name) + ": " + reason);
}

OutputFile::OutputFile(const fs::path& destination, OutputWaiting waiting)
    : writing(std::make_unique<Writing>(destination, std::move(waiting))) {}

OutputFile::~OutputFile() = default;

bool OutputFile::IsTerminal() const {
    return writing->IsTerminal();
}

fs::path OutputFile::GetTemporaryPath() const {
    return writing->GetTemporaryPath();
}

void OutputFile::Write(std::string_view bytes) {
    writing->Write(bytes);
}

void OutputFile::Flush() {
    writing->Flush();
}

void OutputFile::Commit() {
    writing->Commit();
}

}  // namespace nbscore

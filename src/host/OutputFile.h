#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "host/OutputBuffer.h"
#include "host/OutputSink.h"

namespace nbscore {

/// A file that appears whole or not at all: written beside its place under another name and renamed by Commit.
/// Destroyed without Commit it leaves nothing, and a file that was there before stays untouched.
///
/// A symbolic link is followed: the file it points to is replaced. An existing file's permissions are kept, and one
/// that may not be written to is not replaced. A destination that is no regular file (a device, a named pipe) is
/// written to directly.
class OutputFile : public OutputSink {
public:
    /// Throws InputOutputError when the destination is a folder, or nothing can be written beside it.
    /// @param waiting for opening too; what it throws leaves as it is.
    explicit OutputFile(const std::filesystem::path& destination, OutputWaiting waiting = {});
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void Write(std::string_view bytes) override;
    void Flush() override;
    void Commit() override;

private:
    void OpenDirectly();
    void OpenBeside(const std::filesystem::file_status& existing);
    void CreateTemporary();
    void Close();
    void RemoveTemporary() noexcept;
    [[noreturn]] void Fail(const std::string& reason);

    std::filesystem::path finalPath;
    std::filesystem::path temporaryPath;  // empty when written to directly, and once renamed
    std::FILE* file = nullptr;
    OnInterruption onInterruption;
    OutputBuffer buffer;
    /// How much was handed in; the last of it may wait in the buffer.
    std::uint64_t written = 0;
    /// Up to where the system was asked to bring the file to the disk.
    std::uint64_t syncStarted = 0;
};

}  // namespace nbscore

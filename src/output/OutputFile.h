#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "output/OutputSink.h"

namespace nbscore {

/// A file that appears whole or not at all: written beside its place under another name and put there by Commit.
/// Destroyed without Commit it leaves nothing, and a file that was there before stays untouched.
///
/// A symbolic link is followed: the file it points to is replaced. Only its owner can read a file that is being
/// written; Commit gives it the owner, group, permissions and attributes of the file that is there then, as far as the
/// user may. A file that may not be written to is not replaced. A destination that is no regular file (a device, a
/// named pipe) is written to directly.
///
/// No file of another user is touched, even in that user's own folder: no permission is changed by name, and no link
/// that is put into the folder meanwhile is followed. The folder's owner can always remove files from it, and decides
/// by the file to be replaced who may read the new one.
class OutputFile : public OutputSink {
public:
    /// Throws InputOutputError when the destination is a folder, or nothing can be written beside it.
    /// @param waiting for opening too; what it throws leaves as it is.
    explicit OutputFile(const std::filesystem::path& destination, OutputWaiting waiting = {});
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Whether what is written is shown on a terminal.
    bool IsTerminal() const;
    /// Where the bytes are until they are committed; empty when they are written directly, and once committed.
    std::filesystem::path GetTemporaryPath() const;

    void Write(std::string_view bytes) override;
    void Flush() override;
    /// Once the file is in its place, the only error left is that this may not survive a power failure.
    void Commit() override;

private:
    class Writing;

    std::unique_ptr<Writing> writing;
};

}  // namespace nbscore

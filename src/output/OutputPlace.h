#pragma once

#include <cstdio>
#include <filesystem>

namespace nbscore {

/// Where an output file is to appear: a name in a folder, and the new files that are written beside it.
///
/// Where the system can, the folder is held open, so that everything concerns the same folder even when the path to it
/// changes, and no symbolic link in it is followed once the place is found. Failures set errno, as in the C library.
class OutputPlace {
public:
    OutputPlace() = default;
    ~OutputPlace();
    OutputPlace(const OutputPlace&) = delete;
    OutputPlace& operator=(const OutputPlace&) = delete;

    /// Follows symbolic links to where there is none, whether or not there is a file. In a folder that everybody may
    /// write to, only links of the user and of the folder's owner are followed: anybody else could make a link there to
    /// have some other file replaced.
    bool Find(const std::filesystem::path& destination);
    /// Where the links ended.
    const std::filesystem::path& GetPath() const { return path; }

    /// True when there is a regular file and it may be written to; nothing is changed.
    bool MayBeReplaced() const;
    /// Creates an empty file in the folder, which only its owner may read or write, and opens it for writing bytes.
    /// Its name is random, so that no other user can prepare a file or link of that name. Null on failure.
    std::FILE* CreateBeside(std::filesystem::path& name) const;
    /// Whether this name in the folder still stands for this open file.
    bool IsNameOf(std::FILE* file, const std::filesystem::path& name) const;
    /// Gives a file that was created beside the place the attributes of the file that it is to replace
    /// (PassOnAttributes) or, where there is none, the permissions of any new file. False when the old file may not be
    /// replaced.
    bool PrepareToReplace(std::FILE* file) const;
    /// Puts the file of this name, which must be closed, where the output is to appear.
    bool Replace(const std::filesystem::path& name) const;
    /// Makes the folder's names survive a power failure, where the system can.
    bool Sync() const;
    void Remove(const std::filesystem::path& name) const noexcept;

private:
    std::filesystem::path path;
    [[maybe_unused]] int folder = -1;  // on Windows a path leads to it each time
};

}  // namespace nbscore

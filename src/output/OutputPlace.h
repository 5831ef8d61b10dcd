#pragma once

#include <cstdio>
#include <filesystem>

namespace nbscore {

/// Where an output file is to appear: a name in a folder, and the new files that are written beside it.
///
/// Where the system can, the folder is held open. So all that is done concerns the same folder, whatever becomes of the
/// names that lead there, and no symbolic link in it is followed once the place is found. What fails says why as the C
/// library does, with errno.
class OutputPlace {
public:
    OutputPlace() = default;
    ~OutputPlace();
    OutputPlace(const OutputPlace&) = delete;
    OutputPlace& operator=(const OutputPlace&) = delete;

    /// Follows symbolic links to where there is none, whether or not there is a file. In a folder that everybody may
    /// write to, only links of the user's own and of the folder's owner are followed: any other may have been laid
    /// there to have a foreign file replaced.
    bool Find(const std::filesystem::path& destination);
    /// Where the links ended.
    const std::filesystem::path& GetPath() const { return path; }

    /// True when there is a regular file and it may be written to; nothing is changed.
    bool MayBeReplaced() const;
    /// Creates an empty file in the folder, for nobody but its owner to read or write, and opens it for writing bytes.
    /// Its name is one that nobody can foresee, so that nobody can lie in wait at it. Null on failure.
    std::FILE* CreateBeside(std::filesystem::path& name) const;
    /// Whether this name in the folder still stands for this open file.
    bool IsNameOf(std::FILE* file, const std::filesystem::path& name) const;
    /// Gives a file that was created beside the place what the file that it is to replace passes on (PassOnAttributes),
    /// or, where there is none, the permissions of any new file. False when what is there may not be replaced.
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

#pragma once

#include <string>
#include <string_view>

namespace nbscore::fuzz {

/// A file of this process alone, for what reads files by their names. It is on no disk.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// A name to open it by.
    std::string GetPath() const;

private:
    int descriptor;
};

}  // namespace nbscore::fuzz

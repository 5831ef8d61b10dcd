#pragma once

#include <string>
#include <string_view>

namespace nbscore::fuzz {

/// A file in memory, which only this process can open by its name.
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

#pragma once

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/WholeFile.h"

namespace nbscore::test {

/// A new folder for one test, deleted with everything in it by the destructor.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / ("nbscore-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return path; }
    /// @param name in UTF-8.
    std::filesystem::path operator/(const std::string& name) const {
        return path / std::u8string(name.begin(), name.end());
    }

    /// Writes a file and returns its path.
    std::filesystem::path Write(const std::string& name, std::string_view content) const {
        WriteWholeFile(*this / name, content);
        return *this / name;
    }
    std::string Read(const std::string& name) const { return ReadWholeFile(*this / name); }
    /// The names of its files and folders, in UTF-8, sorted.
    std::vector<std::string> List() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            const std::u8string name = entry.path().filename().u8string();
            names.emplace_back(name.begin(), name.end());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::size_t CountEntries() const { return List().size(); }

private:
    std::filesystem::path path;
};

}  // namespace nbscore::test

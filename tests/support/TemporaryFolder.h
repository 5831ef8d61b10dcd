#pragma once

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/WholeFile.h"

namespace nbscore::test {

/// A new folder for one test, gone with everything in it when this object is.
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
    std::filesystem::path operator/(const std::string& name) const { return path / name; }

    /// Writes a file and answers its path.
    std::filesystem::path Write(const std::string& name, std::string_view content) const {
        WriteWholeFile(path / name, content);
        return path / name;
    }
    std::string Read(const std::string& name) const { return ReadWholeFile(path / name); }
    /// The names of what is in it, sorted.
    std::vector<std::string> List() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::size_t CountEntries() const { return List().size(); }

private:
    std::filesystem::path path;
};

}  // namespace nbscore::test

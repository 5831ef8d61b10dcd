#pragma once

#include <filesystem>
#include <optional>

namespace nbscore {

/// A dynamic library, open while this object lives.
class SharedObject {
public:
    /// Throws InputOutputError with the system's own reason when the library does not load.
    explicit SharedObject(const std::filesystem::path& path);
    ~SharedObject();
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;

    /// The address of an exported function; null when the library exports none of that name.
    void* Find(const char* name) const;

private:
    void* handle;
};

/// The folder of the running program's file. Throws InputOutputError when the system does not tell.
std::filesystem::path GetExecutableFolder();

/// The folder from which the framework library was loaded, where the system tells.
std::optional<std::filesystem::path> GetFrameworkFolder();

}  // namespace nbscore

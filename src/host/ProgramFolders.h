#pragma once

#include <filesystem>
#include <optional>

namespace nbscore {

/// The folder of the running program's file. Throws InputOutputError when the system does not tell.
std::filesystem::path GetExecutableFolder();

/// The folder from which the framework library was loaded, where the system tells.
std::optional<std::filesystem::path> GetFrameworkFolder();

}  // namespace nbscore

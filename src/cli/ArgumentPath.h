#pragma once

#include <filesystem>
#include <string>

namespace nbscore {

/// The path that a command-line argument names. Arguments are UTF-8 on every system.
inline std::filesystem::path PathFromArgument(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

/// Checks an argument that names a file: an empty text, such as an unset variable of a shell leaves, is none.
inline std::string RefuseEmptyName(const std::string& text) {
    return text.empty() ? "the name is empty" : "";
}

}  // namespace nbscore

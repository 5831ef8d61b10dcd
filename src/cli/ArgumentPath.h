#pragma once

#include <filesystem>
#include <string>

namespace nbscore {

/// The path that a command-line argument names. Arguments are UTF-8 on every system.
inline std::filesystem::path PathFromArgument(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

}  // namespace nbscore

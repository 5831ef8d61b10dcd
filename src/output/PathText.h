#pragma once

#include <filesystem>
#include <string>

namespace nbscore {

/// A path as UTF-8 text, for messages and for interfaces that take narrow strings.
inline std::string ToUtf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace nbscore

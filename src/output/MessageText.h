#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace nbscore {

/// A text from somebody else's file, ready for an error message: in quotes, without control characters (each
/// becomes a question mark), and cut with "..." where it is long.
std::string QuoteForMessage(std::string_view text);

/// Several such texts, quoted, with commas between; after the tenth, only how many more there are.
std::string ListForMessage(const std::vector<std::string>& texts);

/// A path as UTF-8 text, for messages and for interfaces that take narrow strings.
inline std::string ToUtf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

/// What the operating system says about an error number (errno).
inline std::string GetSystemReason(int errorNumber) {
    return std::error_code(errorNumber, std::generic_category()).message();
}

}  // namespace nbscore

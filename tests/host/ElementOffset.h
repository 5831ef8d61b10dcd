#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore::test {

/// Finds where the start tag of the element of a path begins in a well-formed text, with no XML library. Counted from
/// 0; nothing when there is none.
inline std::optional<std::size_t> ElementOffset(std::string_view text, std::string_view path) {
    struct Open {
        std::string path;
        std::map<std::string, int> children;
    };
    std::vector<Open> open = {{}};
    const auto startsWith = [&](std::size_t at, std::string_view piece) { return text.substr(at).starts_with(piece); };
    const auto behind = [&](std::size_t at, std::string_view piece) { return text.find(piece, at) + piece.size(); };
    for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        if (startsWith(at, "<?")) {
            at = behind(at, "?>");
        } else if (startsWith(at, "<!--")) {
            at = behind(at, "-->");
        } else if (startsWith(at, "</")) {
            open.pop_back();
            ++at;
        } else {
            const std::string name(text.substr(at + 1, text.find_first_of(" />\n", at) - at - 1));
            const int number = ++open.back().children[name];
            std::string own = open.back().path + "/" + name;
            if (open.size() > 1) own += "[" + std::to_string(number) + "]";
            if (own == path) return at;
            std::size_t end = at;
            for (char quote = 0; quote != 0 || text[end] != '>'; ++end) {
                if (quote != 0 && text[end] == quote) {
                    quote = 0;
                } else if (quote == 0 && (text[end] == '"' || text[end] == '\'')) {
                    quote = text[end];
                }
            }
            if (text[end - 1] != '/') open.push_back({std::move(own), {}});
            at = end;
        }
    }
    return std::nullopt;
}

}  // namespace nbscore::test

#include "table/DelimiterHint.h"

#include <algorithm>
#include <string_view>

namespace nbscore {
namespace {

struct Separator {
    char character;
    const char* name;
    const char* option;
};
constexpr Separator otherSeparators[] = {
    {';', "semicolons", "\";\""}, {'\t', "tabs", "tab"}, {',', "commas", "\",\""}, {'|', "bars", "\"|\""}};

/// Whether one of the texts between these characters is the name, perhaps in quotes.
bool HoldsBetween(std::string_view text, char separator, std::string_view name) {
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        std::string_view part = text.substr(begin, end - begin);
        if (part.size() > 1 && part.front() == '"' && part.back() == '"') part = part.substr(1, part.size() - 2);
        if (part == name) return true;
        begin = end + 1;
    }
    return false;
}

std::string Suggest(const Separator& separator) {
    return std::string("seem to stand between ") + separator.name + ": try --delimiter " + separator.option;
}

}  // namespace

std::string SuggestDelimiter(char character) {
    const auto* const found = std::ranges::find(otherSeparators, character, &Separator::character);
    return found == std::end(otherSeparators) ? std::string() : Suggest(*found);
}

std::string SuggestDelimiter(const std::vector<std::string>& columns, const std::string& lackingName) {
    for (const Separator& separator : otherSeparators) {
        const bool holds = std::ranges::any_of(columns, [&](const std::string& column) {
            return column.find(separator.character) != std::string::npos &&
                   HoldsBetween(column, separator.character, lackingName);
        });
        if (holds) return Suggest(separator);
    }
    return {};
}

}  // namespace nbscore

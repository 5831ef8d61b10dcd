#pragma once

#include <CLI/CLI.hpp>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nbscore {

/// The path that a command-line argument names. Arguments are UTF-8 on every system.
std::filesystem::path PathFromArgument(const std::string& text);

/// Checks an argument that names a file: an empty text, such as an unset variable of a shell leaves, is none.
std::string RefuseEmptyName(const std::string& text);

/// Adds an option whose value is one of a few words. The target keeps its value when the option is not given.
template <typename Choice>
CLI::Option* AddChoice(CLI::App& app, const std::string& name, Choice& target,
                       const std::vector<std::pair<std::string, Choice>>& choices, const std::string& description) {
    std::string words;
    for (const auto& choice : choices)
        words += (words.empty() ? "" : "|") + choice.first;
    const auto take = [name, &target, choices, words](const std::string& text) {
        for (const auto& [word, value] : choices) {
            if (text == word) {
                target = value;
                return;
            }
        }
        throw CLI::ValidationError(name, "'" + text + "' is not one of " + words);
    };
    return app.add_option_function<std::string>(name, take, description)->type_name(words);
}

/// The character that stands between cells, from the text of an option: one ASCII character, or "tab" or "\t"
/// for a tabulator. Nothing for what cannot be one: a quote, a line break, NUL, other texts.
std::optional<char> ReadDelimiter(std::string_view text);

}  // namespace nbscore

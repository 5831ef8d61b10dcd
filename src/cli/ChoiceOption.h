#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace nbscore {

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

}  // namespace nbscore

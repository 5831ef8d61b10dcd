#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace nbscore {

/// Lays out the help of the command and of its verbs, 80 columns wide, with the exit statuses at the end.
class HelpFormatter : public CLI::FormatterBase {
public:
    /// @param name the call so far, such as "nbscore score".
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
};

}  // namespace nbscore

#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace nbscore {

/// How the help and the manual page write options and calls: one place for both.

/// Such as "-o, --output FILE", "--quiet" or, for an argument, "MODEL".
std::string SpellOption(const CLI::Option& option);
/// Such as "score [OPTIONS] MODEL [CASES]", without the command's own name.
std::string SpellCall(const CLI::App& app);

/// The arguments (by position), or else the options (by name), of a verb or of the command itself.
std::vector<const CLI::Option*> GetArguments(const CLI::App& app);
std::vector<const CLI::Option*> GetNamedOptions(const CLI::App& app);
std::vector<const CLI::App*> GetVerbs(const CLI::App& app);

}  // namespace nbscore

#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace nbscore {

/// The manual page (section 1, in roff) of a command line with verbs. It is made from the same descriptions
/// as the help, so the two cannot drift apart.
std::string MakeManPage(const CLI::App& app, const std::string& version);

}  // namespace nbscore

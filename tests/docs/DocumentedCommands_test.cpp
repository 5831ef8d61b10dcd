// Runs every command that the documentation shows in a `console` block and compares what it prints.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/RunCommand.h"

namespace nbscore::test {
namespace {

struct DocumentedCommand {
    int line = 0;
    std::string command;
    std::string output;
};

/// The commands of a page: lines after "$ " inside ```console blocks, each followed by its output.
std::vector<DocumentedCommand> CommandsOf(const std::string& page) {
    std::ifstream file(std::filesystem::path(NBSCORE_SOURCE_DIR) / page);
    std::vector<DocumentedCommand> commands;
    bool inside = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with("```")) {
            inside = line == "```console";
        } else if (inside && line.starts_with("$ ")) {
            commands.push_back({number, line.substr(2), ""});
        } else if (inside) {
            commands.back().output += line + "\n";
        }
    }
    return commands;
}

class DocumentedCommands : public testing::TestWithParam<std::string> {};

TEST_P(DocumentedCommands, PrintWhatThePageShows) {
    const std::vector<DocumentedCommand> commands = CommandsOf(GetParam());
    ASSERT_FALSE(commands.empty());
    for (const DocumentedCommand& documented : commands) {
        CommandCall call;
        call.program = "/bin/sh";
        call.arguments = {"-c", documented.command};
        call.workingFolder = NBSCORE_SOURCE_DIR;
        call.environment["PATH"] = NBSCORE_COMMAND_DIR + (":" + std::string(std::getenv("PATH")));
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.out + result.err, documented.output)
            << GetParam() << ":" << documented.line << ": " << documented.command;
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, DocumentedCommands,
                         testing::Values("README.md", "docs/command.md", "docs/explain.md", "docs/standard.md"),
                         [](const auto& page) { return std::filesystem::path(page.param).stem().string(); });

}  // namespace
}  // namespace nbscore::test

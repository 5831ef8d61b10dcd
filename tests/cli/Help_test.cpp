#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cli/TestConsole.h"
#include "cli/help/HelpText.h"
#include "cli/system/ExitStatus.h"

namespace nbscore {

using test::InProcessRun;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string GetHelp(const std::vector<std::string>& arguments) {
    const InProcessRun run(arguments);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.messages.str(), "");
    EXPECT_EQ(run.results.commits, 1);
    return run.results.text;
}

/// The words of a call in an example, up to where another program takes over.
std::vector<std::string> ReadArguments(const std::string& line) {
    std::istringstream words(line.substr(line.find("nbscore ") + 8));
    std::vector<std::string> arguments;
    for (std::string word; words >> word && word != "|";) {
        std::erase(word, '"');
        arguments.push_back(word);
    }
    return arguments;
}

/// The calls of nbscore among the examples of a help text.
std::vector<std::string> FindCalls(const std::string& text) {
    std::vector<std::string> calls;
    for (const HelpBlock& block : ReadHelpText(text)) {
        std::istringstream lines(block.kind == HelpBlock::Kind::Verbatim ? block.text : "");
        for (std::string line; std::getline(lines, line);) {
            if (line.find("nbscore ") != std::string::npos) calls.push_back(line);
        }
    }
    return calls;
}

}  // namespace

TEST(Help, NamesEveryVerbWithItsSummary) {
    const CommandLine commandLine;
    const std::string help = GetHelp({"--help"});

    EXPECT_THAT(help, StartsWith("Usage: nbscore COMMAND [OPTIONS]\n\nScore tables of cases"));
    for (const CLI::App* verb : GetVerbs(commandLine.GetApp())) {
        EXPECT_THAT(help, HasSubstr("\n  " + verb->get_name() + ' '));
        EXPECT_THAT(help, HasSubstr(GetHelpSummary(verb->get_description())));
    }
    EXPECT_THAT(help, HasSubstr("\n  -h, --help "));
    EXPECT_THAT(help, HasSubstr("\n  --version "));
}

TEST(Help, NamesEveryOptionOfAVerb) {
    const CommandLine commandLine;
    for (const CLI::App* verb : GetVerbs(commandLine.GetApp())) {
        const std::string help = GetHelp({verb->get_name(), "--help"});
        EXPECT_THAT(help, StartsWith("Usage: nbscore " + SpellCall(*verb) + "\n\n"));
        for (const CLI::Option* option : verb->get_options()) {
            EXPECT_THAT(help, HasSubstr("\n  " + SpellOption(*option)));
            EXPECT_NE(option->get_description(), "") << SpellOption(*option);
        }
    }
}

TEST(Help, EndsWithTheExitStatuses) {
    for (const std::vector<std::string>& call : {std::vector<std::string>{"-h"}, {"score", "-h"}, {"display", "-h"}}) {
        const std::string help = GetHelp(call);
        const std::size_t begin = help.find("\nExit statuses:\n");
        ASSERT_NE(begin, std::string::npos);
        for (const ExitStatusMeaning& status : GetExitStatusMeanings()) {
            EXPECT_THAT(help.substr(begin), HasSubstr("\n  " + std::string(status.status) + ' '));
        }
    }
}

TEST(Help, FitsIntoEightyColumns) {
    for (const std::vector<std::string>& call : {std::vector<std::string>{"-h"}, {"score", "-h"}, {"display", "-h"}}) {
        std::istringstream lines(GetHelp(call));
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(Help, HasExamplesThatParse) {
    const CommandLine described;
    std::vector<std::string> calls = FindCalls(described.GetApp().get_footer());
    for (const CLI::App* verb : GetVerbs(described.GetApp())) {
        const std::vector<std::string> own = FindCalls(verb->get_footer());
        EXPECT_GE(own.size(), 2U) << verb->get_name();
        calls.insert(calls.end(), own.begin(), own.end());
    }
    for (const std::string& call : calls) {
        // The files of the examples are not there, which is found out only when everything else is right.
        const int expected = call.ends_with("--help") ? 0 : 4;
        EXPECT_EQ(InProcessRun(ReadArguments(call)).exitStatus, expected) << call;
    }
}

TEST(Help, IsWorthMoreThanWhatElseIsWrong_WhenAskedForWithHalfACall) {
    EXPECT_THAT(GetHelp({"score", "--help", "a", "b"}), StartsWith("Usage: nbscore score"));
    EXPECT_THAT(GetHelp({"--help"}), StartsWith("Usage: nbscore COMMAND"));
}

}  // namespace nbscore

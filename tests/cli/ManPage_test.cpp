#include "cli/help/HelpText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CommandLine.h"
#include "cli/system/ExitStatus.h"

namespace nbscore {

using testing::HasSubstr;

namespace {

/// How the page writes a text with hyphens.
std::string InRoff(const std::string& text) {
    std::string escaped;
    for (const char character : text)
        escaped += character == '-' ? std::string("\\-") : std::string(1, character);
    return escaped;
}

}  // namespace

TEST(ManPage, HasEveryOptionOfEveryVerb) {
    const CommandLine commandLine;
    const std::string page = MakeManPage(commandLine.GetApp(), "1.2.3");

    ASSERT_EQ(GetVerbs(commandLine.GetApp()).size(), 7U);
    for (const CLI::App* verb : GetVerbs(commandLine.GetApp())) {
        const std::size_t begin = page.find(".SS " + InRoff("nbscore " + SpellCall(*verb)) + '\n');
        ASSERT_NE(begin, std::string::npos) << verb->get_name();
        const std::string section = page.substr(begin, page.find("\n.S", begin) - begin);
        for (const CLI::Option* option : verb->get_options()) {
            EXPECT_THAT(section, HasSubstr(".TP\n\\fB" + InRoff(SpellOption(*option)) + "\\fR\n" +
                                           InRoff(option->get_description())));
        }
    }
}

TEST(ManPage, HasTheSectionsThatReadersLookFor) {
    const std::string page = MakeManPage(CommandLine().GetApp(), "1.2.3");

    EXPECT_TRUE(page.starts_with(".TH NBSCORE 1 \"\" \"nbscore 1.2.3\" \"User Commands\"\n.SH NAME\nnbscore \\- "));
    for (const char* section : {"SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS", "EXAMPLES", "EXIT STATUS"}) {
        EXPECT_THAT(page, HasSubstr(std::string("\n.SH ") + section + '\n'));
    }
    EXPECT_THAT(page, HasSubstr("\\fBnbscore\\fR score [OPTIONS] MODEL [CASES]"));
    EXPECT_THAT(page, HasSubstr("\\fBnbscore\\fR \\-\\-version"));
}

TEST(ManPage, HasEveryExitStatus) {
    const std::string page = MakeManPage(CommandLine().GetApp(), "1.2.3");
    for (const ExitStatusMeaning& status : GetExitStatusMeanings()) {
        EXPECT_THAT(page, HasSubstr(".TP\n\\fB" + std::string(status.status) + "\\fR\n"));
    }
}

TEST(ManPage, EscapesWhatRoffWouldTakeForItsOwn) {
    CLI::App app("Summary.\n\n.SH is no macro here, nor is \\fB.\n'nor this", "tool");
    const std::string page = MakeManPage(app, "1");
    EXPECT_THAT(page, HasSubstr("\n.PP\n\\&.SH is no macro here, nor is \\efB.\n\\&'nor this\n"));
}

}  // namespace nbscore

// Every case file through the built command, run as a process in the case's folder.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cases/CaseFile.h"
#include "support/FitsPattern.h"
#include "support/RunCommand.h"

namespace nbscore::test {
namespace {

CommandResult ScoreWithCommand(const CaseFile& caseFile, const std::vector<std::string>& options) {
    CommandCall call;
    call.program = NBSCORE_COMMAND;
    call.arguments = {"score", "document.pmml", "rows.csv"};
    const std::vector<std::string> own = caseFile.GetOptions();
    call.arguments.insert(call.arguments.end(), own.begin(), own.end());
    call.arguments.insert(call.arguments.end(), options.begin(), options.end());
    call.workingFolder = caseFile.folder;
    return RunCommand(call);
}

/// Most cases have rows with unknown values, or without any: they are told where a case expects it.
void ExpectScored(const CaseFile& caseFile, std::vector<std::string> options, const std::string& table) {
    if (caseFile.expectedMessages.find("note: ") == std::string::npos) options.push_back("--quiet");
    const CommandResult result = ScoreWithCommand(caseFile, options);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, table);
    EXPECT_EQ(result.err, caseFile.expectedMessages);
}

std::string FirstLineOf(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

void ExpectComplaint(const ExpectedRefusal& expected, const std::string& complaint) {
    const std::string first = FirstLineOf(complaint);
    if (expected.code) {
        EXPECT_THAT(first, FitsPattern("document\\.pmml:[0-9]+:[0-9]+: error [0-9]+: .+"));
        EXPECT_THAT(first, testing::HasSubstr(": error " + std::to_string(*expected.code) + ": "));
    }
    EXPECT_THAT(first, testing::EndsWith(expected.message.value_or("")));
    if (expected.path) {
        EXPECT_THAT(complaint, testing::HasSubstr("\n  at " + *expected.path + "\n"));
    }
    const std::string source = expected.exitStatus == 1 ? "rows.csv" : "document.pmml";
    if (expected.line) {
        EXPECT_THAT(first, testing::HasSubstr(source + ":" + std::to_string(*expected.line) + ":"));
    }
    for (const std::string& text : expected.mentions)
        EXPECT_THAT(complaint, testing::HasSubstr(text));
}

class CommandCases : public testing::TestWithParam<CaseFile> {};

TEST_P(CommandCases, GiveWhatTheCaseFileExpects) {
    const CaseFile& caseFile = GetParam();
    if (caseFile.expectedTable) {
        ExpectScored(caseFile, {}, *caseFile.expectedTable);
        if (caseFile.expectedLongTable) ExpectScored(caseFile, {"--long"}, *caseFile.expectedLongTable);
    } else {
        const CommandResult result = ScoreWithCommand(caseFile, {});
        EXPECT_EQ(result.exitStatus, caseFile.expectedRefusal->exitStatus);
        ExpectComplaint(*caseFile.expectedRefusal, result.err);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CommandCases, testing::ValuesIn(AllCaseFiles()),
                         [](const auto& parameter) { return TestNameOf(parameter.param); });

}  // namespace
}  // namespace nbscore::test

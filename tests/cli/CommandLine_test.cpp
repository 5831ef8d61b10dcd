#include "cli/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "cli/FruitDocument.h"
#include "cli/TestConsole.h"
#include "cli/system/Interrupts.h"
#include "output/HostError.h"
#include "support/TemporaryFolder.h"

namespace nbscore {

using namespace std::chrono_literals;
using test::InProcessRun;
using testing::HasSubstr;

namespace {

class ClosedSink : public OutputSink {
public:
    void Write(std::string_view) override { throw InputOutputError("cannot write to standard output: Broken pipe"); }
    void Commit() override {}
};

/// Long enough that progress is reported several times.
std::string MakeLongTable() {
    std::string table = "colour,weight\n";
    for (int i = 0; i < 100'000; ++i)
        table += "red,200\n";
    return table;
}

class ScoreInProcess : public testing::Test {
protected:
    std::vector<std::string> MakeArguments(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments = {"score", model, table, "--plugin", NBSCORE_PLUGIN};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    test::TemporaryFolder folder;
    std::string model = folder.Write("model.pmml", test::fruitDocument).string();
    std::string table = folder.Write("cases.csv", MakeLongTable()).string();
};

}  // namespace

TEST(CommandLine, SaysItsVersion_WhenAsked) {
    const InProcessRun run({"--version"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.results.text, "nbscore " + CommandLine::GetVersion() + "\n");
}

TEST(CommandLine, ReportsTheFailure_WhenHelpCannotBeWritten) {
    ClosedSink closed;
    std::ostringstream messages;
    Console console{closed, messages};
    EXPECT_EQ(CommandLine().Run({"--help"}, console), 4);
    EXPECT_EQ(messages.str(), "error: cannot write to standard output: Broken pipe\n");
}

TEST_F(ScoreInProcess, ShowsProgressAndClearsIt_WhenTheRunIsLongOnATerminal) {
    const InProcessRun run(MakeArguments(), 500ms);
    EXPECT_EQ(run.exitStatus, 0) << run.messages.str();
    EXPECT_THAT(run.messages.str(), HasSubstr(" rows/s, "));
    EXPECT_THAT(run.messages.str(), HasSubstr(" s left"));
    EXPECT_TRUE(run.messages.str().ends_with(" \r"));
    EXPECT_THAT(run.results.text, HasSubstr("apple"));
}

TEST_F(ScoreInProcess, ShowsNoProgress_WhenQuiet) {
    const InProcessRun run(MakeArguments({"--quiet"}), 500ms);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.messages.str(), "");
}

TEST_F(ScoreInProcess, ShowsNoProgress_WhenStandardErrorIsNoTerminal) {
    const InProcessRun run(MakeArguments());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.messages.str(), "");
}

TEST_F(ScoreInProcess, ShowsNoProgress_WhenItWouldMixWithResultsOnTheSameTerminal) {
    EXPECT_EQ(InProcessRun(MakeArguments(), 500ms, true).messages.str(), "");
}

TEST_F(ScoreInProcess, ShowsProgress_WhenTheResultsGoToAFile) {
    const InProcessRun run(MakeArguments({"-o", (folder.GetPath() / "out.csv").string()}), 500ms, true);
    EXPECT_THAT(run.messages.str(), HasSubstr(" rows/s, "));
    EXPECT_EQ(run.results.text, "");
}

TEST_F(ScoreInProcess, ClearsProgressBeforeTheError_WhenARowIsRefused) {
    folder.Write("cases.csv", MakeLongTable() + "red\n");
    const InProcessRun run(MakeArguments(), 500ms);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_THAT(run.messages.str(), HasSubstr(" \rerror: " + table + ":100002: "));
}

TEST_F(ScoreInProcess, StopsAndLeavesNoFile_WhenInterrupted) {
    const Interrupts interrupts;
    std::raise(SIGTERM);
    const InProcessRun run(MakeArguments({"-o", (folder.GetPath() / "out.csv").string()}));
    EXPECT_EQ(run.exitStatus, 143);
    EXPECT_EQ(run.messages.str(), "interrupted\n");
    EXPECT_THAT(folder.List(), testing::ElementsAre("cases.csv", "model.pmml"));
}

namespace {

/// A pipe that a signal interrupts while it is being written to.
class InterruptedSink : public OutputSink {
public:
    void Write(std::string_view) override {
        std::raise(SIGINT);
        throw InputOutputError("cannot write to standard output: Interrupted system call");
    }
    void Commit() override {}
};

}  // namespace

TEST_F(ScoreInProcess, SaysThatItWasInterrupted_WhenTheSignalMakesAWriteFail) {
    const Interrupts interrupts;
    InterruptedSink sink;
    std::ostringstream messages;
    Console console{sink, messages};
    EXPECT_EQ(CommandLine().Run(MakeArguments(), console), 130);
    EXPECT_EQ(messages.str(), "interrupted\n");
}

}  // namespace nbscore

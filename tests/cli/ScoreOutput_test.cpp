#include <filesystem>

#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ScoreOutputTest : public CommandTest {
protected:
    std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    /// A table whose last row is refused, after more than is held back before writing.
    std::string badTable = [] {
        std::string table = "colour,weight\n";
        for (int i = 0; i < 20000; ++i)
            table += "red,200\n";
        return table + "red,heavy\n";
    }();
};

}  // namespace

TEST_F(ScoreOutputTest, GoesToTheFile_WhenAsked) {
    const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(folder.Read("out.csv"), expected);
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

TEST_F(ScoreOutputTest, GoesToStandardOutput_WhenTheFileIsADash) {
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "--output", "-"}).out, expected);
}

TEST_F(ScoreOutputTest, ReplacesTheTableItself_WhenAsked) {
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "-o", "cases.csv"}).exitStatus, 0);
    EXPECT_EQ(folder.Read("cases.csv"), expected);
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml"));
}

TEST_F(ScoreOutputTest, LeavesNoFile_WhenARowIsRefused) {
    const CommandResult result = Run({"score", "model.pmml", "-o", "out.csv"}, badTable);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, StartsWith("error: standard input:20002: "));
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml"));
}

TEST_F(ScoreOutputTest, KeepsAnEarlierFile_WhenARowIsRefused) {
    folder.Write("out.csv", "earlier");
    EXPECT_EQ(Run({"score", "model.pmml", "-o", "out.csv"}, badTable).exitStatus, 1);
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

TEST_F(ScoreOutputTest, KeepsTheTable_WhenItIsToBeReplacedAndIsRefused) {
    folder.Write("cases.csv", badTable);
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "-o", "cases.csv"}).exitStatus, 1);
    EXPECT_EQ(folder.Read("cases.csv"), badTable);
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml"));
}

TEST_F(ScoreOutputTest, IsNotBegun_WhenTheDocumentIsRefused) {
    folder.Write("model.pmml", "<PMML>");
    folder.Write("out.csv", "earlier");
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"}).exitStatus, 3);
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
}

TEST_F(ScoreOutputTest, Fails_WhenThePlaceCannotBeWrittenTo) {
    std::filesystem::create_directory(folder.GetPath() / "folder");
    for (const char* place : {"nowhere/out.csv", "folder"}) {
        const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", place});
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("error: cannot write "));
        EXPECT_THAT(result.err, HasSubstr(place));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.GetPath() / "folder"));
}

TEST_F(ScoreOutputTest, FailsWithAMessage_WhenThePipeIsClosed) {
    CommandCall call = MakeCall({"score", "model.pmml", "cases.csv"});
    call.outputIsClosedPipe = true;
    const CommandResult result = RunCommand(call);
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "error: cannot write to standard output: Broken pipe\n");
}

TEST_F(ScoreOutputTest, FailsWithAMessage_WhenThereIsNoStandardOutput) {
    CommandCall call = MakeCall({"score", "model.pmml", "cases.csv"});
    call.outputIsMissing = true;
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot write to standard output: Bad file descriptor\n");

    call.arguments.insert(call.arguments.end(), {"-o", "out.csv"});
    EXPECT_EQ(RunCommand(call).exitStatus, 0);
    EXPECT_EQ(folder.Read("out.csv"), expected);
    EXPECT_EQ(folder.Read("cases.csv"), fruitCases);
}

#ifndef _WIN32  // no device that is always full, no shell

TEST_F(ScoreOutputTest, FailsWithAMessage_WhenTheDiskIsFull) {
    CommandCall call = MakeCall({"score", "model.pmml", "cases.csv"});
    call.outputPath = "/dev/full";
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot write to standard output: No space left on device\n");

    const CommandResult named = Run({"score", "model.pmml", "cases.csv", "-o", "/dev/full"});
    EXPECT_EQ(named.exitStatus, 4);
    EXPECT_EQ(named.err, "error: cannot write /dev/full: No space left on device\n");
}

TEST_F(ScoreOutputTest, IsNotWrittenIntoTheWrongFile_WhenStandardStreamsAreClosed) {
    CommandCall call = MakeCall({"-c", "'" NBSCORE_COMMAND "' score model.pmml cases.csv >&-"});
    call.program = "/bin/sh";
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot write to standard output: Bad file descriptor\n");

    call.arguments[1] = "'" NBSCORE_COMMAND "' score model.pmml -o out.csv 2>&- <bad.csv";
    folder.Write("bad.csv", badTable);
    EXPECT_EQ(RunCommand(call).exitStatus, 1);
    EXPECT_EQ(folder.Read("cases.csv"), fruitCases);
    EXPECT_THAT(folder.List(), ElementsAre("bad.csv", "cases.csv", "model.pmml"));

    call.arguments[1] = "'" NBSCORE_COMMAND "' score model.pmml <&-";
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot read standard input: Bad file descriptor\n");
}

#endif

}  // namespace nbscore::test

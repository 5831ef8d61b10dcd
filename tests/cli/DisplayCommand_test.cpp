#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::HasSubstr;
using testing::StartsWith;

using DisplayCommandTest = CommandTest;

TEST_F(DisplayCommandTest, WritesTheModelsOwnDump) {
    const CommandResult result = Run({"display", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("Begin Display of NaiveBayesModel."));
    EXPECT_THAT(result.out, HasSubstr("Input variable names: colour weight "));
    EXPECT_THAT(result.out, HasSubstr("End of NaiveBayesModel display."));
}

TEST_F(DisplayCommandTest, WritesTheSameToAFile) {
    const std::string expected = Run({"display", "model.pmml"}).out;
    const CommandResult result = Run({"display", "model.pmml", "--output", "dump.txt"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(folder.Read("dump.txt"), expected);
}

TEST_F(DisplayCommandTest, TakesAnotherPlugin) {
    EXPECT_EQ(Run({"display", "model.pmml", "--plugin", NBSCORE_PLUGIN}).out, Run({"display", "model.pmml"}).out);
    EXPECT_EQ(Run({"display", "model.pmml", "--plugin", "nothere.so"}).exitStatus, 4);
}

TEST_F(DisplayCommandTest, ShowsAModelThatCannotScore) {
    std::string document = Replace(fruitDocument, "<Value value=\"pear\"/>", "<Value value=\"apple\"/>");
    while (document.find("value=\"pear\"") != std::string::npos) {
        document = Replace(document, "value=\"pear\"", "value=\"apple\"");
    }
    folder.Write("model.pmml", document);
    ASSERT_EQ(Run({"score", "model.pmml", "cases.csv"}).exitStatus, 3);
    const CommandResult result = Run({"display", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("End of NaiveBayesModel display."));
}

TEST_F(DisplayCommandTest, LeavesNoFile_WhenTheDocumentIsRefused) {
    folder.Write("model.pmml", Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"0\""));
    const CommandResult result = Run({"display", "model.pmml", "-o", "dump.txt"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.err, StartsWith("model.pmml:15:"));
    EXPECT_THAT(folder.List(), testing::ElementsAre("cases.csv", "model.pmml"));
}

TEST_F(DisplayCommandTest, FailsWithAMessage_WhenTheDiskIsFullOrThePipeIsClosed) {
    CommandCall call = MakeCall({"display", "model.pmml"});
#ifndef _WIN32  // no device that is always full
    call.outputPath = "/dev/full";
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot write to standard output: No space left on device\n");
    call.outputPath.reset();
#endif
    call.outputIsClosedPipe = true;
    EXPECT_EQ(RunCommand(call).exitStatus, 4);
    EXPECT_EQ(RunCommand(call).err, "error: cannot write to standard output: Broken pipe\n");
}

}  // namespace nbscore::test

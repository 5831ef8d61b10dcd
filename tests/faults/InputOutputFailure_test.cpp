// The built command while its reads and writes fail.

#include <cerrno>
#include <fstream>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int cannotWatch = 125;

class InputOutputFailure : public CommandTest {
protected:
    void SetUp() override {
        const CommandResult probe = RunWith({}, {"--version"});
        if (probe.exitStatus == cannotWatch) GTEST_SKIP() << "processes may not be watched here";
    }

    CommandResult RunWith(const std::vector<std::string>& faults, const std::vector<std::string>& arguments,
                          const std::string& standardInput = "") const {
        CommandCall call = MakeCall(faults, standardInput);
        call.program = NBSCORE_RUN_WITH_FAULTS;
        call.arguments.insert(call.arguments.end(), {"--", NBSCORE_COMMAND});
        call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
        call.environment["ASAN_OPTIONS"] =
            "detect_leaks=0";  // looking for leaks is watching too, and only one may watch
        return RunCommand(call);
    }

    static std::string Fail(const std::string& what, int error, int after = 0) {
        return what + ":" + std::to_string(after) + ":" + std::to_string(error);
    }

    /// A run that must fail says why, and leaves the file that it was to replace unchanged and no other file.
    void ExpectFailure(const std::string& fault, const std::vector<std::string>& arguments,
                       const std::string& complaint) {
        SCOPED_TRACE(fault);
        folder.Write("out.csv", "earlier");
        const CommandResult result = RunWith({fault}, arguments);
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_THAT(result.err, HasSubstr(complaint));
        EXPECT_EQ(folder.Read("out.csv"), "earlier");
        EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
    }
};

const std::vector<std::string> intoFile = {"score", "model.pmml", "cases.csv", "-o", "out.csv"};
const std::vector<std::vector<std::string>> verbs = {{"score", "model.pmml", "cases.csv"},
                                                     {"score", "model.pmml", "cases.csv", "--format", "jsonl"},
                                                     {"check", "model.pmml"},
                                                     {"verify", "model.pmml"},
                                                     {"display", "model.pmml"}};

TEST_F(InputOutputFailure, ChangesNothing_WhenEachCallTransfersOneByte) {
    for (const auto& arguments : verbs) {
        const CommandResult expected = Run(arguments);
        const CommandResult result = RunWith({"bytewise"}, arguments);
        EXPECT_EQ(result.out, expected.out);
        EXPECT_EQ(result.err, expected.err);
        EXPECT_EQ(result.exitStatus, 0);
    }
}

TEST_F(InputOutputFailure, ChangesNothing_WhenSignalsInterruptHalfTheCalls) {
    for (const auto& arguments : verbs) {
        const CommandResult expected = Run(arguments);
        const CommandResult result = RunWith({"interrupted", "bytewise"}, arguments);
        EXPECT_EQ(result.out, expected.out) << result.err;
        EXPECT_EQ(result.exitStatus, 0);
    }
}

TEST_F(InputOutputFailure, ChangesNoFile_WhenCallsAreInterruptedAndTransferOneByte) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    const CommandResult result = RunWith({"interrupted", "bytewise"}, intoFile);
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(folder.Read("out.csv"), expected);
    const CommandResult piped =
        RunWith({"interrupted", "bytewise"}, {"score", "model.pmml", "-", "-o", "out.csv"}, fruitCases);
    EXPECT_EQ(piped.exitStatus, 0) << piped.err;
    EXPECT_EQ(folder.Read("out.csv"), expected);
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

TEST_F(InputOutputFailure, IsReported_WhenTheDiskIsFullAfterSomeBytes) {
    for (const int after : {0, 1, 40})
        ExpectFailure(Fail("write:.nbscore-", ENOSPC, after), intoFile,
                      "error: cannot write out.csv: No space left on device");
}

TEST_F(InputOutputFailure, IsReported_WhenTheFileDoesNotReachTheDisk) {
    ExpectFailure(Fail("sync:.nbscore-", EIO), intoFile, "error: cannot write out.csv: Input/output error");
    ExpectFailure(Fail("close:.nbscore-", EIO), intoFile, "error: cannot write out.csv: Input/output error");
    ExpectFailure(Fail("rename:", EACCES), intoFile, "error: cannot write out.csv: Permission denied");
}

/// By then the file is in its place and complete.
TEST_F(InputOutputFailure, IsReported_WhenTheFilesNameDoesNotReachTheDisk) {
    for (const std::string earlier : {"earlier", ""}) {
        std::filesystem::remove(folder / "out.csv");
        if (!earlier.empty()) folder.Write("out.csv", earlier);
        const CommandResult result = RunWith({Fail("sync:./", EIO)}, intoFile);
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_THAT(result.err, HasSubstr("error: cannot write out.csv: Input/output error"));
        EXPECT_EQ(folder.Read("out.csv"), Run({"score", "model.pmml", "cases.csv"}).out);
    }
    // Some file systems cannot do it at all.
    EXPECT_EQ(RunWith({Fail("sync:./", EINVAL)}, intoFile).exitStatus, 0);
}

/// Only the final write to the disk must succeed; its failure is reported.
TEST_F(InputOutputFailure, ChangesNothing_WhenWritingToTheDiskAheadFails) {
    std::string cases = "colour,size,weight,shop\n";
    for (int i = 0; i < 300'000; ++i)
        cases += "red,small,3.5,a shop of its own\n";
    const std::vector<std::string> arguments = {"score",     "model.pmml", "-",
                                                "-o",        "out.csv",    "--allow-missing-fields",
                                                "--threads", "1"};  // only the first thread is watched
    EXPECT_EQ(Run(arguments, cases).exitStatus, 0);
    const std::string expected = folder.Read("out.csv");
    EXPECT_GT(expected.size(), std::size_t{10} << 20) << "enough to start writing early";
    const CommandResult result = RunWith({Fail("start-sync:.nbscore-", EIO)}, arguments, cases);
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_TRUE(folder.Read("out.csv") == expected);
}

TEST_F(InputOutputFailure, IsReported_WhenReadingTheTableFails) {
    for (const int after : {0, 1, 30})
        ExpectFailure(Fail("read:cases.csv", EIO, after), intoFile, "error: cannot read cases.csv: Input/output error");
}

TEST_F(InputOutputFailure, IsReported_WhenReadingTheDocumentFails) {
    for (const int after : {0, 1, 300}) {
        ExpectFailure(Fail("read:model.pmml", EIO, after), intoFile,
                      "error: The file \"model.pmml\" cannot be read: Input/output error.");
        for (const std::string verb : {"check", "verify", "display"}) {
            const CommandResult result = RunWith({Fail("read:model.pmml", EIO, after)}, {verb, "model.pmml"});
            EXPECT_EQ(result.exitStatus, 4) << verb << result.out;
            EXPECT_THAT(result.out + result.err,
                        HasSubstr("The file \"model.pmml\" cannot be read: Input/output error."));
        }
    }
}

TEST_F(InputOutputFailure, IsReported_WhenStandardOutputFails) {
    for (const int error : {ENOSPC, EPIPE, EIO}) {
        for (const auto& arguments : verbs) {
            const CommandResult result = RunWith({Fail("write:standard", error, 10)}, arguments);
            EXPECT_EQ(result.exitStatus, 4) << arguments.front();
            EXPECT_THAT(result.err,
                        HasSubstr("error: cannot write to standard output: " + std::generic_category().message(error)));
            EXPECT_EQ(result.out.size(), 10U);
        }
    }
}

TEST_F(InputOutputFailure, IsReported_WhenReadingStandardInputFails) {
    folder.Write("out.csv", "earlier");
    const CommandResult result =
        RunWith({Fail("read:standard", EIO, 30)}, {"score", "model.pmml", "-", "-o", "out.csv"}, fruitCases);
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_THAT(result.err, StartsWith("error: cannot read standard input: Input/output error"));
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
}

}  // namespace
}  // namespace nbscore::test

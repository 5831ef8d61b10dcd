#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "cli/CommandTest.h"

namespace nbscore::test {

using testing::ElementsAre;

namespace {

class InterruptedRunTest : public CommandTest {
protected:
    /// Waits until the folder holds so many files: the run has come as far as its output.
    void WaitForFiles(std::size_t count) const {
        using namespace std::chrono_literals;
        for (int i = 0; i < 6000 && folder.List().size() < count; ++i)
            std::this_thread::sleep_for(10ms);
        ASSERT_EQ(folder.List().size(), count);
    }
};

}  // namespace

TEST_F(InterruptedRunTest, LeavesNothingBehind_WhenItWaitsForAPipe) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        StartedCommand started(MakeCall({"score", "model.pmml", "-", "-o", "out.csv"}, fruitCases));
        WaitForFiles(3);
        started.SendSignal(signal);
        const CommandResult result = started.Wait();
        EXPECT_EQ(result.exitStatus, 128 + signal);
        EXPECT_EQ(result.err, "interrupted\n");
        EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml"));
    }
}

TEST_F(InterruptedRunTest, KeepsAnEarlierFile) {
    folder.Write("out.csv", "earlier");
    StartedCommand started(MakeCall({"score", "model.pmml", "-", "-o", "out.csv"}, fruitCases));
    WaitForFiles(4);
    started.SendSignal(SIGINT);
    EXPECT_EQ(started.Wait().exitStatus, 130);
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

TEST_F(InterruptedRunTest, EndsTheWaitForANamedPipesWriter) {
    const std::string fifo = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    StartedCommand started(MakeCall({"score", "model.pmml", "fifo"}));
    {
        // Opening it waits until the run has it open, so the run is past its start.
        std::ofstream writer(fifo);
        started.SendSignal(SIGINT);
        EXPECT_EQ(started.Wait().exitStatus, 130);
    }
}

/// Whether nobody has opened it to write, somebody has and writes nothing, or a part of the document came.
TEST_F(InterruptedRunTest, EndsTheWaitForADocument) {
    using namespace std::chrono_literals;
    const std::string fifo = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
             {"score", "fifo", "cases.csv"}, {"display", "fifo"}, {"check", "fifo"}, {"verify", "fifo"}}) {
        for (const char* written : {"nothing", "", "<PMML><Header/>"}) {
            SCOPED_TRACE(call.front() + " " + written);
            StartedCommand started(MakeCall(call));
            std::ofstream writer;
            if (std::string(written) == "nothing") {
                std::this_thread::sleep_for(300ms);  // so that it waits
            } else {
                writer.open(fifo);
                writer << written << std::flush;
            }
            started.SendSignal(SIGTERM);
            const CommandResult result = started.Wait();
            EXPECT_EQ(result.exitStatus, 128 + SIGTERM);
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(result.err, "interrupted\n");
        }
    }
}

TEST_F(InterruptedRunTest, EndsTheWaitForADocumentOnStandardInput) {
    using namespace std::chrono_literals;
    StartedCommand started(MakeCall({"check", "/dev/stdin"}));
    std::this_thread::sleep_for(300ms);
    started.SendSignal(SIGINT);
    EXPECT_EQ(started.Wait().exitStatus, 130);
}

TEST_F(InterruptedRunTest, EndsWhenItsTimeIsOver_WhateverItWaitsFor) {
    const std::string fifo = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
             {"score", "fifo"}, {"score", "model.pmml", "fifo"}, {"score", "model.pmml", "-", "-o", "out.csv"}}) {
        std::vector<std::string> limited = call;
        limited.insert(limited.end(), {"--max-time", "0.3"});
        StartedCommand started(MakeCall(limited));
        const CommandResult result = started.Wait();
        EXPECT_EQ(result.exitStatus, 5);
        EXPECT_EQ(result.err, "error: the run takes more time than --max-time allows\n");
        EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "fifo", "model.pmml"));
    }
}

TEST_F(InterruptedRunTest, EndsTheWaitForANamedPipesReader) {
    using namespace std::chrono_literals;
    const std::string fifo = (folder.GetPath() / "fifo").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::string table = fruitCases;
    while (table.size() < 1'000'000)
        table += table.substr(table.find('\n') + 1);
    folder.Write("cases.csv", table);
    for (const bool isOpened : {false, true}) {
        StartedCommand started(MakeCall({"score", "model.pmml", "cases.csv", "-o", "fifo"}));
        std::ifstream reader;
        if (isOpened) reader.open(fifo);
        std::this_thread::sleep_for(300ms);  // so that it waits, until it may open or because the pipe is full
        started.SendSignal(SIGTERM);
        const CommandResult result = started.Wait();
        EXPECT_EQ(result.exitStatus, 128 + SIGTERM);
        EXPECT_EQ(result.err, "interrupted\n");
    }
}

TEST_F(InterruptedRunTest, GoesOn_WhenTheSignalIsIgnoredAsUnderNohup) {
    CommandCall call = MakeCall({"-c", "trap '' HUP; exec '" NBSCORE_COMMAND "' score model.pmml - -o out.csv"});
    call.program = "/bin/sh";
    StartedCommand started(call);
    started.WriteInput(fruitCases);
    WaitForFiles(3);
    started.SendSignal(SIGHUP);
    started.CloseInput();
    EXPECT_EQ(started.Wait().exitStatus, 0);
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

}  // namespace nbscore::test

// Reads and writes fail for reasons that need no tracing: full devices, closed pipes, limits on the size of files, slow
// readers, timers.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

#include "cli/CommandTest.h"
#include "output/OutputFile.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::vector<std::vector<std::string>> verbs = {{"score", "model.pmml", "cases.csv"},
                                                     {"score", "model.pmml", "cases.csv", "--format", "jsonl"},
                                                     {"check", "model.pmml"},
                                                     {"verify", "model.pmml"},
                                                     {"display", "model.pmml"}};

class UnwatchedFailure : public CommandTest {
protected:
    void WriteTable(std::size_t bytes) const {
        std::string table = fruitCases;
        const std::string row = table.substr(table.find('\n') + 1);
        while (table.size() < bytes)
            table += row;
        folder.Write("cases.csv", table);
    }

    /// Scores into a file while no file may be longer than this many blocks of 512 bytes: the write that reaches the
    /// limit succeeds in part, the next one fails.
    CommandResult ScoreWithLimit(int blocks) const {
        return RunLimited("-f " + std::to_string(blocks), "score model.pmml cases.csv -o out.csv");
    }

    static constexpr int shellRefuses = 126;

    /// @param limit as the shell's command ulimit takes it.
    CommandResult RunLimited(const std::string& limit, const std::string& arguments) const {
        CommandCall call = MakeCall({"-c", "(ulimit " + limit + ") || exit " + std::to_string(shellRefuses) +
                                               "; ulimit " + limit + "; exec '" NBSCORE_COMMAND "' " + arguments});
        call.program = "/bin/sh";
        call.environment["ASAN_OPTIONS"] = "detect_leaks=0";  // looking for leaks takes files and threads of its own
        return RunCommand(call);
    }
};

TEST_F(UnwatchedFailure, IsReported_WhenTheDeviceIsFull) {
    for (const auto& arguments : verbs) {
        CommandCall call = MakeCall(arguments);
        call.outputPath = "/dev/full";
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.exitStatus, 4) << arguments.front();
        EXPECT_THAT(result.err, HasSubstr("error: cannot write to standard output: No space left on device"));
    }
    const CommandResult named = Run({"score", "model.pmml", "cases.csv", "-o", "/dev/full"});
    EXPECT_EQ(named.exitStatus, 4);
    EXPECT_THAT(named.err, HasSubstr("error: cannot write /dev/full: No space left on device"));
}

TEST_F(UnwatchedFailure, IsReported_WhenNobodyReadsThePipe) {
    for (const auto& arguments : verbs) {
        CommandCall call = MakeCall(arguments);
        call.outputIsClosedPipe = true;
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.exitStatus, 4) << arguments.front();
        EXPECT_THAT(result.err, HasSubstr("error: cannot write to standard output: Broken pipe"));
    }
}

TEST_F(UnwatchedFailure, LeavesTheEarlierFileAlone_WhenTheNewOneGetsTooLong) {
#ifdef NBSCORE_SANITIZED
    GTEST_SKIP() << "the counts of lines that run are written as the process ends, and are too long as well";
#endif
    // The short table is written at once, the long one piece by piece.
    for (const std::size_t bytes : {5'000UL, 200'000UL}) {
        WriteTable(bytes);
        folder.Write("out.csv", "earlier");
        for (const int blocks : {0, 1, 30}) {
            const CommandResult result = ScoreWithLimit(blocks);
            EXPECT_EQ(result.exitStatus, 4) << blocks;
            // With a limit of 0 not even the message could be written.
            if (blocks > 0) {
                EXPECT_THAT(result.err, HasSubstr("error: cannot write out.csv: File too large"));
            }
            EXPECT_EQ(folder.Read("out.csv"), "earlier");
            EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
        }
    }
    EXPECT_EQ(ScoreWithLimit(100'000).exitStatus, 0);
    EXPECT_EQ(folder.Read("out.csv"), Run({"score", "model.pmml", "cases.csv"}).out);
}

TEST_F(UnwatchedFailure, IsReported_WhenTooFewFilesMayBeOpen) {
#ifdef NBSCORE_SANITIZED
    GTEST_SKIP() << "sanitizers open a pipe to see whether an object may be read";
#endif
    const std::vector<std::string> files = {"cases.csv", "model.pmml"};
    std::string told;
    for (int mostFiles = 4; mostFiles < 12; ++mostFiles) {
        const CommandResult result =
            RunLimited("-n " + std::to_string(mostFiles), "score model.pmml cases.csv -o out.csv");
        // With fewer the system cannot even start the program.
        if (result.exitStatus == 127) continue;
        if (result.exitStatus == 0) break;
        EXPECT_EQ(result.exitStatus, 4) << mostFiles;
        EXPECT_THAT(result.err, StartsWith("error: ")) << mostFiles;
        EXPECT_THAT(result.err, HasSubstr("Too many open files")) << mostFiles;
        EXPECT_EQ(folder.List(), files) << mostFiles;
        told += result.err;
    }
    EXPECT_THAT(told, HasSubstr("error: cannot make a pipe: Too many open files\n"));
    EXPECT_THAT(told, HasSubstr("error: cannot write out.csv: Too many open files\n"));
    EXPECT_EQ(RunLimited("-n 20", "score model.pmml cases.csv -o out.csv").exitStatus, 0);
}

TEST_F(UnwatchedFailure, ChangesNothing_WhenNoThreadCanBeStarted) {
    WriteTable(2'000'000);
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    // A thread gets a stack as large as the limit of the program's own: more than there is memory.
    const CommandResult result = RunLimited("-s 100000000000", "score model.pmml cases.csv --threads 4");
    if (result.exitStatus == shellRefuses) GTEST_SKIP() << "the limit may not be raised here";
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_TRUE(result.out == expected);
}

TEST_F(UnwatchedFailure, ChangesNothing_WhenTheTableComesByteByByte) {
    StartedCommand started(MakeCall({"score", "model.pmml", "-"}));
    for (const char byte : fruitCases)
        started.WriteInput(std::string_view(&byte, 1));
    started.CloseInput();
    const CommandResult result = started.Wait();
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, Run({"score", "model.pmml", "cases.csv"}).out);
}

/// A named pipe whose reader takes a little at a time, and nothing before it is released.
class SlowReader {
public:
    explicit SlowReader(const std::filesystem::path& pipe) {
        // The reader's thread inherits the blocked signals of the timer.
        sigset_t timer;
        sigemptyset(&timer);
        sigaddset(&timer, SIGALRM);
        pthread_sigmask(SIG_BLOCK, &timer, nullptr);
        thread = std::thread([this, pipe] { Read(pipe); });
        pthread_sigmask(SIG_UNBLOCK, &timer, nullptr);
    }

    ~SlowReader() {
        LetGo();
        if (thread.joinable()) thread.join();
    }
    SlowReader(const SlowReader&) = delete;
    SlowReader& operator=(const SlowReader&) = delete;

    void LetGo() { mayRead = true; }
    std::string Join() {
        thread.join();
        return text;
    }

private:
    void Read(const std::filesystem::path& pipe) {
        const int descriptor = open(pipe.c_str(), O_RDONLY | O_CLOEXEC);
        while (!mayRead)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        std::array<char, 5000> piece;
        for (ssize_t count = 0; (count = read(descriptor, piece.data(), piece.size())) > 0;)
            text.append(piece.data(), static_cast<std::size_t>(count));
        close(descriptor);
    }

    std::atomic<bool> mayRead = false;
    std::string text;
    std::thread thread;
};

/// Signals that come every millisecond and interrupt calls that wait.
class InterruptingTimer {
public:
    InterruptingTimer() {
        struct sigaction action = {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, &before);
        SetInterval(1000);
    }
    ~InterruptingTimer() {
        SetInterval(0);
        sigaction(SIGALRM, &before, nullptr);
    }
    InterruptingTimer(const InterruptingTimer&) = delete;
    InterruptingTimer& operator=(const InterruptingTimer&) = delete;

private:
    static void SetInterval(int microseconds) {
        const itimerval interval = {{0, microseconds}, {0, microseconds}};
        setitimer(ITIMER_REAL, &interval, nullptr);
    }

    struct sigaction before = {};
};

TEST_F(UnwatchedFailure, LosesNoByte_WhenSignalsInterruptWritingIntoAFullPipe) {
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string expected;
    for (int i = 0; i < 200'000; ++i)
        expected += std::to_string(i) + '\n';
    SlowReader reader(pipe);
    int interruptions = 0;
    {
        const auto countInterruptions = [&] {
            if (++interruptions == 20) reader.LetGo();
        };
        OutputFile file(pipe, {countInterruptions, {}});
        const InterruptingTimer timer;
        for (std::size_t begin = 0; begin < expected.size(); begin += 100'000)
            file.Write(std::string_view(expected).substr(begin, 100'000));
        file.Commit();
    }
    EXPECT_TRUE(reader.Join() == expected);
    EXPECT_GE(interruptions, 20);
}

}  // namespace
}  // namespace nbscore::test

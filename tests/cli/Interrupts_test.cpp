#include "cli/system/Interrupts.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <optional>

#include "output/HostError.h"
#include "output/OutputFile.h"
#include "support/TemporaryFolder.h"

namespace nbscore {

namespace {

int CatchSignal() {
    try {
        Interrupts::ThrowIfRequested();
    } catch (const InterruptedError& interrupt) {
        return interrupt.GetSignal();
    }
    return 0;
}

}  // namespace

TEST(Interrupts, AreNoted_WhenASignalAsksToStop) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXCPU}) {
        const Interrupts interrupts;
        EXPECT_EQ(CatchSignal(), 0);
        std::raise(signal);
        EXPECT_EQ(CatchSignal(), signal);
    }
    EXPECT_EQ(CatchSignal(), 0);
}

TEST(Interrupts, EndAWaitForInput_WhenTheSignalCameBeforeIt) {
    const Interrupts interrupts;
    std::array<int, 2> pipeEnds;
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    std::raise(SIGTERM);
    EXPECT_THROW(Interrupts::WaitUntilReadable(pipeEnds[0]), InterruptedError);
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

TEST(Interrupts, LetAWaitEnd_WhenThereIsSomethingToRead) {
    const Interrupts interrupts;
    std::array<int, 2> pipeEnds;
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    ASSERT_EQ(write(pipeEnds[1], "x", 1), 1);
    Interrupts::WaitUntilReadable(pipeEnds[0]);
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

TEST(Interrupts, LeaveASignalIgnored_WhenItWasIgnoredBefore) {
    auto* const before = std::signal(SIGHUP, SIG_IGN);
    {
        const Interrupts interrupts;
        std::raise(SIGHUP);
        EXPECT_EQ(CatchSignal(), 0);
    }
    EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

TEST(InterruptsDeathTest, EndTheProcess_WhenTheSameSignalComesAThirdTime) {
    EXPECT_EXIT(
        {
            const Interrupts interrupts;
            std::raise(SIGINT);
            std::raise(SIGINT);
            if (CatchSignal() != SIGINT) _exit(1);
            std::raise(SIGINT);
            _exit(0);
        },
        testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupts, LetAWriteToAClosedPipeFail_InsteadOfEndingTheProcess) {
    const Interrupts interrupts;
    std::array<int, 2> pipeEnds;
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    close(pipeEnds[0]);
    EXPECT_LT(write(pipeEnds[1], "x", 1), 0);
    close(pipeEnds[1]);
}

TEST(Interrupts, AreHeardAsBefore_WhenNoneLivesAnyMore) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXCPU, SIGPIPE, SIGXFSZ, SIGALRM}) {
        const auto ownHandler = [](int) {};
        auto* const before = std::signal(signal, ownHandler);
        { const Interrupts interrupts; }
        EXPECT_EQ(std::signal(signal, before), static_cast<void (*)(int)>(ownHandler)) << signal;
    }
}

namespace {

constexpr auto endProcess = Interrupts::WithNothingToCleanUp::EndProcess;

/// Longer than a run may take to hear a request.
void GoOnWithoutListening() {
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
         std::chrono::steady_clock::now() < end;) {
    }
    _exit(99);
}

}  // namespace

TEST(InterruptsDeathTest, EndTheProcess_WhenThereIsNothingToCleanUp) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EXIT(
            {
                const Interrupts interrupts(endProcess);
                std::raise(signal);
                _exit(99);
            },
            testing::ExitedWithCode(128 + signal), "^interrupted\n$");
    }
}

TEST(InterruptsDeathTest, EndTheProcess_WhenWhatWasToBeCleanedUpIsGone) {
    EXPECT_EXIT(
        {
            const Interrupts interrupts(endProcess);
            {
                const UnfinishedOutput unfinished;
                std::raise(SIGTERM);
                if (CatchSignal() != SIGTERM) _exit(98);
            }
            _exit(99);
        },
        testing::ExitedWithCode(143), "^interrupted\n$");
}

TEST(InterruptsDeathTest, EndTheProcessWithoutAWord_WhenItsOutputIsThere) {
    EXPECT_EXIT(
        {
            const Interrupts interrupts(endProcess);
            {
                const UnfinishedOutput unfinished;
                UnfinishedOutput::NoteCommitted();
            }
            std::raise(SIGTERM);
            _exit(99);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(InterruptsDeathTest, EndTheProcessAndRemoveTheFile_WhenNobodyHears) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder.Write("unfinished", "");
    for (const bool isTime : {false, true}) {
        folder.Write("unfinished", "");
        EXPECT_EXIT(
            {
                const Interrupts interrupts(endProcess);
                const UnfinishedOutput unfinished;
                UnfinishedOutput::SetTemporaryFile(file);
                std::optional<TimeLimit> limit;
                if (isTime) {
                    limit.emplace(std::chrono::duration<double>(0.001));
                } else {
                    std::raise(SIGTERM);
                }
                GoOnWithoutListening();
            },
            testing::ExitedWithCode(isTime ? 5 : 143), isTime ? "^error: the run takes more time " : "^interrupted\n$");
        EXPECT_EQ(folder.CountEntries(), 0U);
    }
}

/// The temporary file stands beside the file that the link leads to, not beside the link.
TEST(InterruptsDeathTest, RemoveTheFile_WhenTheOutputsNameIsALinkIntoAnotherFolder) {
    const test::TemporaryFolder folder;
    const std::filesystem::path target = folder.GetPath() / "target";
    const std::filesystem::path link = folder.GetPath() / "out.csv";
    std::filesystem::create_directory(target);
    std::filesystem::create_symlink("target/out.csv", link);
    EXPECT_EXIT(
        {
            const Interrupts interrupts(endProcess);
            const UnfinishedOutput unfinished;
            const OutputFile file(link, {[] {}, {}});
            if (std::filesystem::is_empty(target)) _exit(98);
            UnfinishedOutput::SetTemporaryFile(file.GetTemporaryPath());
            std::raise(SIGTERM);
            GoOnWithoutListening();
        },
        testing::ExitedWithCode(143), "^interrupted\n$");
    EXPECT_TRUE(std::filesystem::is_empty(target));
}

/// The file has its own name by then.
TEST(InterruptsDeathTest, EndTheProcessWithoutAWord_WhenTheTemporaryFileIsGone) {
    EXPECT_EXIT(
        {
            const Interrupts interrupts(endProcess);
            const UnfinishedOutput unfinished;
            UnfinishedOutput::SetTemporaryFile("/nowhere/.nbscore-0.tmp");
            std::raise(SIGTERM);
            GoOnWithoutListening();
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(TimeLimit, IsARequestToStop_WhenTheTimeIsOver) {
    const Interrupts interrupts;
    {
        const TimeLimit limit(std::chrono::duration<double>(1e-9));
        EXPECT_TRUE(Interrupts::AreRequested());
        EXPECT_THROW(Interrupts::ThrowIfRequested(), TimeLimitError);
    }
    EXPECT_FALSE(Interrupts::AreRequested());
    for (const double seconds : {1000.0, 1e10, 1e300}) {
        const TimeLimit limit{std::chrono::duration<double>(seconds)};
        EXPECT_FALSE(Interrupts::AreRequested());
    }
    const TimeLimit none{std::nullopt};
    EXPECT_FALSE(Interrupts::AreRequested());
}

TEST(TimeLimit, EndsAWaitForInput) {
    for (const bool hasHandlers : {false, true}) {
        std::optional<Interrupts> interrupts;
        if (hasHandlers) interrupts.emplace();
        std::array<int, 2> pipeEnds;
        ASSERT_EQ(pipe(pipeEnds.data()), 0);
        const TimeLimit limit(std::chrono::duration<double>(0.01));
        EXPECT_THROW(Interrupts::WaitUntilReadable(pipeEnds[0]), TimeLimitError);
        close(pipeEnds[0]);
        close(pipeEnds[1]);
    }
}

}  // namespace nbscore

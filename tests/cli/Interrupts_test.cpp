#include "cli/Interrupts.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "host/HostError.h"

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
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXCPU, SIGPIPE, SIGXFSZ}) {
        const auto ownHandler = [](int) {};
        auto* const before = std::signal(signal, ownHandler);
        { const Interrupts interrupts; }
        EXPECT_EQ(std::signal(signal, before), static_cast<void (*)(int)>(ownHandler)) << signal;
    }
}

}  // namespace nbscore

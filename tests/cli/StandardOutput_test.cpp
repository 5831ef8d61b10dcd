#include "cli/system/InterruptibleOutput.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "output/HostError.h"

namespace nbscore::test {
namespace {

TEST(StandardOutput, BytesComeOut_WhenCommitted) {
    testing::internal::CaptureStdout();
    StandardOutput output;
    output.Write("a\r\n");
    output.Write("b\n");
    output.Commit();
#ifdef _WIN32
    // What was captured is read as text, which loses the carriage return; another one would have stayed.
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a\nb\n");
#else
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a\r\nb\n");
#endif
}

#ifndef _WIN32

/// Runs in a process of its own, whose standard output is then spoilt for good.
[[noreturn]] void WriteAndExit(std::size_t bytes) {
    try {
        StandardOutput output;
        output.Write(std::string(bytes, 'x'));
        output.Commit();
    } catch (const InputOutputError& failure) {
        std::cerr << failure.what();
        std::_Exit(4);
    }
    std::_Exit(0);
}

TEST(StandardOutputDeathTest, FailureIsReported_WhenTheDiskIsFull) {
    const auto writeToFullDisk = [](std::size_t bytes) {
        if (std::freopen("/dev/full", "wb", stdout) == nullptr) std::_Exit(1);
        WriteAndExit(bytes);
    };
    EXPECT_EXIT(writeToFullDisk(1), testing::ExitedWithCode(4),
                "^cannot write to standard output: No space left on device");
    EXPECT_EXIT(writeToFullDisk(1 << 20), testing::ExitedWithCode(4),
                "^cannot write to standard output: No space left on device");
}

TEST(StandardOutputDeathTest, FailureIsReported_WhenThePipeIsClosed) {
    const auto writeToClosedPipe = [] {
        std::signal(SIGPIPE, SIG_IGN);
        int ends[2];
        if (pipe(ends) != 0 || dup2(ends[1], STDOUT_FILENO) < 0) std::_Exit(1);
        close(ends[0]);
        WriteAndExit(1 << 20);
    };
    EXPECT_EXIT(writeToClosedPipe(), testing::ExitedWithCode(4), "^cannot write to standard output: Broken pipe");
}

#endif

}  // namespace
}  // namespace nbscore::test

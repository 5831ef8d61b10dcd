#include "cli/system/Progress.h"

#include <gtest/gtest.h>

#include <sstream>

namespace nbscore {

using namespace std::chrono_literals;

/// A progress line on a terminal that is a text, with a clock that the test moves.
class ProgressTest : public testing::Test {
protected:
    Console::Clock GetClock() {
        return [this] { return time; };
    }
    /// What the terminal got since the last look.
    std::string TakeShown() {
        std::string shown = terminal.str();
        terminal.str("");
        return shown;
    }

    std::chrono::steady_clock::time_point time;
    std::ostringstream terminal;
};

TEST_F(ProgressTest, ShowsNothing_WhenTheRunIsShorterThanASecond) {
    {
        Progress progress(terminal, 1000, GetClock());
        time += 999ms;
        progress.Update({500, 500});
    }
    EXPECT_EQ(TakeShown(), "");
}

TEST_F(ProgressTest, ShowsRowsSpeedPercentageAndTimeLeft_WhenTheSizeIsKnown) {
    Progress progress(terminal, 10000, GetClock());
    time += 2s;
    progress.Update({1234567, 2500});
    EXPECT_EQ(TakeShown(), "\r1,234,567 rows, 617,283 rows/s, 25 %, 6 s left");
}

TEST_F(ProgressTest, ShowsRowsAndSpeedOnly_WhenTheSizeIsUnknown) {
    Progress progress(terminal, std::nullopt, GetClock());
    time += 4s;
    progress.Update({100, 2500});
    EXPECT_EQ(TakeShown(), "\r100 rows, 25 rows/s");
}

TEST_F(ProgressTest, IsRenewedFourTimesASecond) {
    Progress progress(terminal, std::nullopt, GetClock());
    time += 1s;
    progress.Update({1, 1});
    EXPECT_NE(TakeShown(), "");
    time += 249ms;
    progress.Update({2, 2});
    EXPECT_EQ(TakeShown(), "");
    time += 1ms;
    progress.Update({3, 3});
    EXPECT_NE(TakeShown(), "");
}

TEST_F(ProgressTest, CoversALongerLine_WhenTheNextIsShorter) {
    Progress progress(terminal, std::nullopt, GetClock());
    time += 1s;
    progress.Update({1000, 1});
    TakeShown();
    time += 99s;
    progress.Update({1000, 1});
    // "1,000 rows, 1,000 rows/s" is covered to its end.
    EXPECT_EQ(TakeShown(), "\r1,000 rows, 10 rows/s   ");
}

TEST_F(ProgressTest, LeavesNoTrace_WhenTheRunEnds) {
    {
        Progress progress(terminal, std::nullopt, GetClock());
        time += 1s;
        progress.Update({1, 1});
        EXPECT_EQ(TakeShown(), "\r1 rows, 1 rows/s");
    }
    EXPECT_EQ(TakeShown(), "\r" + std::string(16, ' ') + "\r");
}

TEST_F(ProgressTest, StaysAtAHundredPercent_WhenTheFileGrowsWhileItIsRead) {
    Progress progress(terminal, 100, GetClock());
    time += 2s;
    progress.Update({10, 250});
    EXPECT_EQ(TakeShown(), "\r10 rows, 5 rows/s, 100 %, 0 s left");
}

TEST_F(ProgressTest, NamesMinutesAndHours_WhenMuchTimeIsLeft) {
    Progress progress(terminal, 1000, GetClock());
    time += 2s;
    progress.Update({10, 10});
    EXPECT_EQ(TakeShown(), "\r10 rows, 5 rows/s, 1 %, 3 min 18 s left");
    time += 98s;
    progress.Update({10, 10});
    EXPECT_NE(TakeShown().find("2 h 45 min left"), std::string::npos);
}

TEST_F(ProgressTest, SaysNothingOfTheEnd_WhenNothingWasReadYet) {
    Progress progress(terminal, 0, GetClock());
    time += 2s;
    progress.Update({0, 0});
    EXPECT_EQ(TakeShown(), "\r0 rows, 0 rows/s");
}

}  // namespace nbscore

// The built command is killed at many moments while it replaces a file. The moments are chosen by its progress, which
// the folder shows, not by the clock; so it is known what must be left behind.

#include <chrono>
#include <functional>
#include <thread>

#include "cli/CommandTest.h"
#include "support/FitsPattern.h"

namespace nbscore::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* earlier = "earlier";

class KilledRun : public CommandTest {
protected:
    KilledRun() {
        const std::string row = table.substr(table.find('\n') + 1);
        while (table.size() < 700'000)
            table += row;
        folder.Write("cases.csv", table);
        whole = Run({"score", "model.pmml", "cases.csv"}).out;
        folder.Write("out.csv", earlier);
    }

    std::vector<std::string> ListTemporaries() const {
        std::vector<std::string> names = folder.List();
        std::erase_if(names, [](const std::string& name) {
            return name == "cases.csv" || name == "model.pmml" || name == "out.csv";
        });
        return names;
    }

    bool IsReplaced() const { return std::filesystem::file_size(folder / "out.csv") != std::string(earlier).size(); }

    /// True when the run has written this much of its result, or has replaced the file.
    bool HasWritten(std::uintmax_t bytes) const {
        for (const std::string& name : ListTemporaries()) {
            std::error_code isGone;
            const std::uintmax_t size = std::filesystem::file_size(folder / name, isGone);
            if (!isGone && size >= bytes) return true;
        }
        return IsReplaced();
    }

    static void WaitUntil(const std::function<bool()>& hasHappened) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (!hasHappened() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        ASSERT_TRUE(hasHappened()) << "the run does not get on";
    }

    static void Kill(StartedCommand& started) {
        started.Kill();
        started.Wait();
    }

    void RemoveTemporaries() const {
        for (const std::string& name : ListTemporaries()) {
            EXPECT_THAT(name, FitsPattern("\\.nbscore-[0-9a-f]+\\.tmp"));
            std::filesystem::remove(folder / name);
        }
    }

    std::string table = fruitCases;
    /// What the run writes when it is not killed.
    std::string whole;
    const std::vector<std::string> fromFile = {"score", "model.pmml", "cases.csv", "-o", "out.csv", "--quiet"};
    const std::vector<std::string> fromPipe = {"score", "model.pmml", "-", "-o", "out.csv", "--quiet"};
};

TEST_F(KilledRun, LeavesTheEarlierFile_WhenItsInputHasNotEnded) {
    constexpr std::size_t runs = 60;
    // Bytes that may still be on their way to the file: in the pipe, in the reader, in front of the writer.
    constexpr std::size_t mostOnItsWay = 400'000;
    for (std::size_t i = 0; i < runs; ++i) {
        StartedCommand started(MakeCall(fromPipe));
        const std::size_t given = table.size() * i / (runs - 1);
        started.WriteInput(table.substr(0, given));
        const std::size_t scored = given < mostOnItsWay ? 0 : whole.size() / table.size() * (given - mostOnItsWay);
        WaitUntil([&] { return HasWritten(scored); });
        Kill(started);
        if (HasFatalFailure()) return;
        ASSERT_EQ(folder.Read("out.csv"), earlier) << given << " bytes of the table";
        ASSERT_THAT(ListTemporaries(), SizeIs(1));
        RemoveTemporaries();
    }
}

TEST_F(KilledRun, LeavesTheEarlierFileOrTheWholeNewOne) {
    constexpr std::size_t runs = 140;
    constexpr std::size_t runsToTheEnd = 20;
    for (std::size_t i = 0; i < runs; ++i) {
        folder.Write("out.csv", earlier);
        StartedCommand started(MakeCall(fromFile));
        if (i < runs - runsToTheEnd) {
            WaitUntil([&] { return HasWritten(whole.size() * i / (runs - runsToTheEnd - 1)); });
        } else {
            WaitUntil([&] { return IsReplaced(); });
        }
        Kill(started);
        if (HasFatalFailure()) return;
        const std::string left = folder.Read("out.csv");
        ASSERT_TRUE(left == earlier || left == whole) << "a part of " << left.size() << " bytes";
        ASSERT_TRUE(left == whole || i < runs - runsToTheEnd);
        // A temporary file that was not yet renamed stays, and nothing else.
        ASSERT_THAT(ListTemporaries(), SizeIs(left == earlier ? 1 : 0));
        RemoveTemporaries();
    }
}

TEST_F(KilledRun, DoesNotHinderTheNextOne) {
    for (int i = 0; i < 5; ++i) {
        StartedCommand started(MakeCall(fromPipe));
        WaitUntil([&] { return ListTemporaries().size() == static_cast<std::size_t>(i) + 1; });
        Kill(started);
        if (HasFatalFailure()) return;
    }
    const std::vector<std::string> leftBefore = ListTemporaries();
    ASSERT_EQ(Run(fromFile).exitStatus, 0);
    EXPECT_EQ(folder.Read("out.csv"), whole);
    EXPECT_EQ(ListTemporaries(), leftBefore);
    RemoveTemporaries();
    ASSERT_EQ(Run(fromFile).exitStatus, 0);
    EXPECT_THAT(ListTemporaries(), IsEmpty());
}

}  // namespace
}  // namespace nbscore::test

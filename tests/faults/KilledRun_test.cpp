// The built command, killed at any moment while it replaces a file.

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::StartsWith;

class KilledRun : public CommandTest {
protected:
    KilledRun() {
        std::string table = fruitCases;
        const std::string row = table.substr(table.find('\n') + 1);
        while (table.size() < 700'000)
            table += row;
        folder.Write("cases.csv", table);
    }

    const std::vector<std::string> intoFile = {"score", "model.pmml", "cases.csv", "-o", "out.csv", "--quiet"};
};

TEST_F(KilledRun, LeavesTheEarlierFileOrTheWholeNewOne) {
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(Run(intoFile).exitStatus, 0);
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - start;
    const std::string expected = folder.Read("out.csv");
    const std::string earlier = "earlier";

    std::mt19937 random(7);
    std::uniform_real_distribution<double> moment(0.0, 1.1);
    int leftEarlier = 0;
    int leftTemporary = 0;
    for (int i = 0; i < 200; ++i) {
        folder.Write("out.csv", earlier);
        StartedCommand started(MakeCall(intoFile));
        std::this_thread::sleep_for(whole * moment(random));
        started.SendSignal(SIGKILL);
        started.Wait();
        const std::string left = folder.Read("out.csv");
        ASSERT_TRUE(left == earlier || left == expected) << "a part of " << left.size() << " bytes";
        if (left == earlier) ++leftEarlier;
        for (const std::string& name : folder.List()) {
            if (name == "cases.csv" || name == "model.pmml" || name == "out.csv") continue;
            ++leftTemporary;
            EXPECT_THAT(name, testing::MatchesRegex("\\.nbscore-[0-9a-f]+\\.tmp"));
            // Half of them stay, to see that nobody minds.
            if (leftTemporary % 2 == 0) std::filesystem::remove(folder / name);
        }
    }
    EXPECT_GT(leftEarlier, 20);
    EXPECT_GT(leftTemporary, 20);

    ASSERT_EQ(Run(intoFile).exitStatus, 0);
    EXPECT_EQ(folder.Read("out.csv"), expected);
}

}  // namespace
}  // namespace nbscore::test

#include "host/SubModelRanking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "FakeSet.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::vector<std::size_t> Rank(std::optional<std::size_t> best, const std::vector<double>& numbers) {
    std::vector<SubModelScore> scores;
    for (const double number : numbers)
        scores.push_back(MakeScore("", number));
    return SubModelRanking(best).Rank(scores);
}

TEST(SubModelRanking, KeepsAllInTheModelsOrder_WhenNoNumberIsGiven) {
    EXPECT_THAT(Rank(std::nullopt, {0.1, 0.9, notANumber, 0.5}), ElementsAre(0, 1, 2, 3));
}

TEST(SubModelRanking, PutsTheHighestFirst) {
    EXPECT_THAT(Rank(2, {0.1, 0.9, 0.3, 0.5}), ElementsAre(1, 3));
    EXPECT_THAT(Rank(1, {-infinity, 0.0, infinity}), ElementsAre(2));
}

TEST(SubModelRanking, KeepsTheModelsOrder_AmongEqualScores) {
    EXPECT_THAT(Rank(3, {0.5, 0.9, 0.5, 0.5, 0.9}), ElementsAre(1, 4, 0));
    EXPECT_THAT(Rank(2, {0.0, -0.0, 0.0}), ElementsAre(0, 1));
}

TEST(SubModelRanking, PutsScoresThatAreNoNumberLast) {
    EXPECT_THAT(Rank(4, {notANumber, -infinity, notANumber, 0.1}), ElementsAre(3, 1, 0, 2));
}

TEST(SubModelRanking, KeepsWhatThereIs_WhenMoreAreAskedFor) {
    EXPECT_THAT(Rank(9, {0.1, 0.2}), ElementsAre(1, 0));
    EXPECT_THAT(Rank(9, {}), IsEmpty());
}

}  // namespace
}  // namespace nbscore::test

#include "table/ModelResults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "framework/ModelSelfDescription.h"
#include "output/HostError.h"
#include "support/FakeSet.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(FindSubModelNames, ReturnsThemInOrder) {
    FakeSet set({MakeScore("b", 0.5), MakeScore("", 0.5), MakeScore("a", 0.5), MakeScore("b", 0.5)});
    EXPECT_THAT(FindSubModelNames(set), Optional(ElementsAre("b", "", "a", "b")));
}

TEST(FindSubModelNames, LeavesPositionsToTheFirstRealCase) {
    FakeSet set({MakeScore("a", 0.5)});
    FindSubModelNames(set);
    EXPECT_EQ(set.indexedCases, 0);
}

TEST(FindSubModelNames, AsksTheDescriptionAndScoresNothing_WhenTheSetDescribesItself) {
    class DescribedSet : public FakeSet, public ModelSelfDescription {
    public:
        ModelDescription Describe() const override {
            ModelDescription description;
            for (const std::string name : {"b", "", "b"})
                description.classifiers.emplace_back().name = name;
            return description;
        }
        MCScore::MCStatus GetScore(const ScoreCaseRecord*, ScoreResult*&, bool) override {
            ADD_FAILURE() << "nobody needs a score";
            return {};
        }
    } set;
    EXPECT_THAT(FindSubModelNames(set), Optional(ElementsAre("b", "", "b")));
}

TEST(FindSubModelNames, IsEmptyForASetWithoutSubModels_AndNothingForASingleClassifier) {
    FakeSet empty;
    EXPECT_THAT(FindSubModelNames(empty), Optional(IsEmpty()));
    FakeModel single;
    EXPECT_EQ(FindSubModelNames(single), std::nullopt);
}

TEST(FindSubModelNames, Throws_WhenTheSetGivesNoScores) {
    class Mute : public FakeSet {
    public:
        MCScore::MCStatus GetScore(const ScoreCaseRecord*, ScoreResult*& result, bool) override {
            if (result == nullptr) result = new FakeSetResult;
            return {};
        }
    } mute;
    EXPECT_THROW(FindSubModelNames(mute), UnscorableModelError);
}

TEST(LabelSubModels, AreTheNames_WhenTheseAreUnique) {
    EXPECT_THAT(LabelSubModels({"b", "a", "B", " "}), ElementsAre("b", "a", "B", " "));
    EXPECT_THAT(LabelSubModels({}), IsEmpty());
}

TEST(LabelSubModels, HaveTheIndex_WhereNamesAreEqualOrEmpty) {
    EXPECT_THAT(LabelSubModels({"a", "b", "a"}), ElementsAre("a_0", "b", "a_2"));
    EXPECT_THAT(LabelSubModels({"", "b", ""}), ElementsAre("0", "b", "2"));
}

TEST(LabelSubModels, MakeWayForOneAnother) {
    EXPECT_THAT(LabelSubModels({"a", "a", "a_0"}), ElementsAre("a_0", "a_1", "a_0_2"));
    EXPECT_THAT(LabelSubModels({"", "0", "0_1"}), ElementsAre("0", "0_1", "0_1_2"));
}

TEST(LabelSubModels, AreNeverEqual_WhateverTheNames) {
    const std::vector<std::string> pieces = {"", "0", "1", "a", "a_0", "a_1", "a_0_1", "_1"};
    for (std::size_t code = 0; code < 8 * 8 * 8 * 8; ++code) {
        const std::vector<std::string> names = {pieces[code % 8], pieces[code / 8 % 8], pieces[code / 64 % 8],
                                                pieces[code / 512]};
        const std::vector<std::string> labels = LabelSubModels(names);
        EXPECT_EQ(std::set<std::string>(labels.begin(), labels.end()).size(), 4U)
            << testing::PrintToString(names) << " " << testing::PrintToString(labels);
    }
}

std::vector<std::size_t> Rank(std::optional<std::size_t> best, const std::vector<double>& numbers) {
    return SubModelRanking(best).Rank(numbers);
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

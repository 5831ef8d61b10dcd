#include "host/SubModelNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "FakeSet.h"
#include "host/HostError.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

TEST(FindSubModelNames, TellsThemInOrder_AsTheyAre) {
    FakeSet set({MakeScore("b", 0.5), MakeScore("", 0.5), MakeScore("a", 0.5), MakeScore("b", 0.5)});
    EXPECT_THAT(FindSubModelNames(set), Optional(ElementsAre("b", "", "a", "b")));
}

TEST(FindSubModelNames, LeavesPositionsToTheFirstRealCase) {
    FakeSet set({MakeScore("a", 0.5)});
    FindSubModelNames(set);
    EXPECT_EQ(set.indexedCases, 0);
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

TEST(LabelSubModels, AreTheNames_WhereTheyTellSubModelsApart) {
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

}  // namespace
}  // namespace nbscore::test

// A set of sub-models laid open.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SetParts.h"
#include "framework/ModelSelfTables.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

ModelTables TablesOf(const SelfLearningModel& set) {
    return dynamic_cast<const ModelSelfTables&>(set).GetTables();
}

std::unique_ptr<SelfLearningModel> Offers() {
    return MakeSet(TextVariable("answer", {"no", "yes"}),
                   {{"card", 0.5, {5, 3}, {{"age", {"young"}, {{1, 3}}}}}, {"loan", 1.0, {2, 6}, {}}});
}

void ExpectTables(const ModelTables& tables) {
    EXPECT_TRUE(tables.isSet);
    EXPECT_THAT(tables.targetCategories, SizeIs(2));
    ASSERT_THAT(tables.classifiers, SizeIs(2));
    EXPECT_EQ(tables.classifiers[0].name, "card");
    EXPECT_THAT(tables.classifiers[0].priors,
                ElementsAre((0.5 + 5) / (2 * 0.5 + 1 / 0.5), (0.5 + 3) / (2 * 0.5 + 1 / 0.5)));
    EXPECT_THAT(*tables.classifiers[0].predictors.at(0).probabilities,
                ElementsAre(ElementsAre((0.5 + 1) / (1 * 0.5 + 1), (0.5 + 3) / (1 * 0.5 + 3))));
    EXPECT_EQ(tables.classifiers[1].name, "loan");
    EXPECT_THAT(tables.classifiers[1].priors, ElementsAre((1.0 + 2) / (2 + 1), (1.0 + 6) / (2 + 1)));
    EXPECT_THAT(tables.classifiers[1].predictors, IsEmpty());
}

TEST(SetTables, HoldWhatEachSubModelMultiplies) {
    ExpectTables(TablesOf(*Offers()));
}

TEST(SetTables, AreTheSame_AfterTheFirstCase) {
    const auto set = Offers();
    Scores(*set, TextRecord({{"age", "young"}}));
    ExpectTables(TablesOf(*set));
}

TEST(SetTables, HoldNoClassifier_WithoutSubModels) {
    const auto set = MakeSet(TextVariable("answer", {"no", "yes"}), {});
    EXPECT_TRUE(TablesOf(*set).isSet);
    EXPECT_THAT(TablesOf(*set).classifiers, IsEmpty());
}

TEST(SetTables, SayWhetherDerivedFieldsAreRead) {
    const auto set = Offers();
    EXPECT_FALSE(TablesOf(*set).readsDerivedFields);
    set->SetNeedDerivedPredictor(true);
    EXPECT_TRUE(TablesOf(*set).readsDerivedFields);
}

}  // namespace
}  // namespace nbscore::test

#include "selflearning/EitherModel.h"
#include "support/NamesOfRole.h"

namespace {

using nbscore::test::EitherModel;
using nbscore::test::NameOfKind;
using nbscore::test::NamesOfRole;

using Names = std::vector<std::string>;

class VarsOfRole : public ::testing::TestWithParam<bool> {
protected:
    VarsOfRole() {
        for (const char* name : {"outlook", "windy", "id"})
            either.AddTextPredictor({name, {"a"}, {{1, 1}}});
    }

    EitherModel either{GetParam(), 1, {1, 1}};
    ScoreModel& model = either.Get();
};

TEST_P(VarsOfRole, AreACopyOfTheTarget_WhateverRolesWereNoted) {
    model.SetVarRole("windy", ScoreModel::TargetRole);
    EXPECT_EQ(NamesOfRole(model, ScoreModel::TargetRole), Names{"play"});
    const std::unique_ptr<ScoreDictionary> vars(model.GetVarsOfRole(ScoreModel::TargetRole));
    ASSERT_NE(vars->GetVar("play"), nullptr);
    EXPECT_NE(vars->GetVar("play"), model.GetDictionary()->GetVar("play"));
    EXPECT_EQ(vars->GetVar("play")->GetValueLabelSet()->GetValueLabels().size(), 2u);
}

TEST_P(VarsOfRole, AreCopiesOfTheVariablesOfARole) {
    model.SetVarRole("windy", ScoreModel::PredictorRole);
    model.SetVarRole("outlook", ScoreModel::PredictorRole);
    EXPECT_EQ(NamesOfRole(model, ScoreModel::PredictorRole), (Names{"outlook", "windy"}));
    EXPECT_EQ(NamesOfRole(model, ScoreModel::NoRole), (Names{"play", "id"}));
}

TEST_P(VarsOfRole, AreNull_WhenNoVariableHasTheRole) {
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::PredictorRole), nullptr);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, VarsOfRole, ::testing::Bool(), NameOfKind);

template <typename Model>
class VarsOfRoleOfNothing : public ::testing::Test {};

using BothKinds = ::testing::Types<NaiveBayesModel, SelfLearningModel>;
TYPED_TEST_SUITE(VarsOfRoleOfNothing, BothKinds);

TYPED_TEST(VarsOfRoleOfNothing, AreNull_WhenThereIsNoTargetOrNoDictionary) {
    const TypeParam model;
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::TargetRole), nullptr);
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::PredictorRole), nullptr);
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::NoRole), nullptr);
}

}  // namespace

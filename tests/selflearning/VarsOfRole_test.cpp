#include <gtest/gtest.h>

#include "selflearning/SetParts.h"
#include "support/NamesOfRole.h"

namespace {

using nbscore::test::MakeSet;
using nbscore::test::NamesOfRole;
using nbscore::test::TextVariable;

using Names = std::vector<std::string>;

std::unique_ptr<SelfLearningModel> Set() {
    return MakeSet(TextVariable("play", {"yes", "no"}),
                   {{"a", 1, {1, 1}, {{"outlook", {"p"}, {{1, 1}}}, {"windy", {"p"}, {{1, 1}}}}},
                    {"b", 1, {1, 1}, {{"id", {"p"}, {{1, 1}}}}}});
}

TEST(SelfLearningRoles, GiveACopyOfTheTarget_WhateverRolesWereNoted) {
    const auto set = Set();
    set->SetVarRole("windy", ScoreModel::TargetRole);
    EXPECT_EQ(NamesOfRole(*set, ScoreModel::TargetRole), Names{"play"});
    const std::unique_ptr<ScoreDictionary> vars(set->GetVarsOfRole(ScoreModel::TargetRole));
    ASSERT_NE(vars->GetVar("play"), nullptr);
    EXPECT_NE(vars->GetVar("play"), set->GetDictionary()->GetVar("play"));
    EXPECT_EQ(vars->GetVar("play")->GetValueLabelSet()->GetValueLabels().size(), 2u);
}

TEST(SelfLearningRoles, GiveCopiesOfTheVariablesOfARole) {
    const auto set = Set();
    set->SetVarRole("id", ScoreModel::PredictorRole);
    set->SetVarRole("outlook", ScoreModel::PredictorRole);
    EXPECT_EQ(NamesOfRole(*set, ScoreModel::PredictorRole), (Names{"outlook", "id"}));
    EXPECT_EQ(NamesOfRole(*set, ScoreModel::NoRole), (Names{"windy", "play"}));
}

TEST(SelfLearningRoles, GiveNull_WhenNoVariableHasTheRole) {
    EXPECT_EQ(Set()->GetVarsOfRole(ScoreModel::PredictorRole), nullptr);
}

TEST(SelfLearningRoles, GiveNull_WhenThereIsNoTargetOrNoDictionary) {
    const SelfLearningModel set;
    EXPECT_EQ(set.GetVarsOfRole(ScoreModel::TargetRole), nullptr);
    EXPECT_EQ(set.GetVarsOfRole(ScoreModel::PredictorRole), nullptr);
    EXPECT_EQ(set.GetVarsOfRole(ScoreModel::NoRole), nullptr);
}

}  // namespace

#include <gtest/gtest.h>

#include "ModelParts.h"

namespace {

using nbscore::test::MakeModel;
using nbscore::test::TextVariable;

std::unique_ptr<NaiveBayesModel> Model() {
    return MakeModel(1, TextVariable("play", {"yes", "no"}), {1, 1},
                     {{"outlook", {"a"}, {{1, 1}}}, {"windy", {"a"}, {{1, 1}}}, {"id", {"a"}, {{1, 1}}}});
}

std::vector<std::string> Names(const NaiveBayesModel& model, ScoreModel::VarRole role) {
    const std::unique_ptr<ScoreDictionary> vars(model.GetVarsOfRole(role));
    if (vars == nullptr) return {"(null)"};
    std::vector<ScoreDictVar*> all;
    vars->GetAllVars(all);
    std::vector<std::string> names;
    for (const ScoreDictVar* var : all)
        names.push_back(var->GetName());
    return names;
}

TEST(VarsOfRole, GivesACopyOfTheTarget_WhateverRolesWereNoted) {
    const auto model = Model();
    EXPECT_EQ(Names(*model, ScoreModel::TargetRole), (std::vector<std::string>{"play"}));
    const std::unique_ptr<ScoreDictionary> vars(model->GetVarsOfRole(ScoreModel::TargetRole));
    ASSERT_NE(vars->GetVar("play"), nullptr);
    EXPECT_NE(vars->GetVar("play"), model->GetDictionary()->GetVar("play"));
    EXPECT_EQ(vars->GetVar("play")->GetValueLabelSet()->GetValueLabels().size(), 2u);
}

TEST(VarsOfRole, GivesCopiesOfTheVariablesOfARole) {
    const auto model = Model();
    model->SetVarRole("windy", ScoreModel::PredictorRole);
    model->SetVarRole("outlook", ScoreModel::PredictorRole);
    EXPECT_EQ(Names(*model, ScoreModel::PredictorRole), (std::vector<std::string>{"outlook", "windy"}));
    EXPECT_EQ(Names(*model, ScoreModel::NoRole), (std::vector<std::string>{"id", "play"}));
}

TEST(VarsOfRole, GivesNull_WhenNoVariableHasTheRole) {
    EXPECT_EQ(Names(*Model(), ScoreModel::PredictorRole), (std::vector<std::string>{"(null)"}));
}

TEST(VarsOfRole, GivesNull_WhenThereIsNoTargetOrNoDictionary) {
    const NaiveBayesModel model;
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::TargetRole), nullptr);
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::PredictorRole), nullptr);
    EXPECT_EQ(model.GetVarsOfRole(ScoreModel::NoRole), nullptr);
}

}  // namespace

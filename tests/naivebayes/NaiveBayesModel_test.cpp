#include "naivebayes/NaiveBayesModel.h"

#include <gtest/gtest.h>

#include "CountedEncoder.h"
#include "ModelParts.h"
#include "ScoredCase.h"

namespace {

using nbscore::test::CountedEncoder;
using nbscore::test::DisplayText;
using nbscore::test::MakeModel;
using nbscore::test::Score;
using nbscore::test::ScoreTexts;
using nbscore::test::TextVariable;

TEST(NaiveBayesModel, HasNothingSet_WhenNew) {
    NaiveBayesModel model;
    EXPECT_EQ(model.GetModelType(), 21);
    EXPECT_FALSE(model.GetPredictionOnly());
    EXPECT_FALSE(model.NeedDerivedPredictor());
    EXPECT_TRUE(model.GetPredictorVarNames().empty());
    EXPECT_NE(DisplayText(model).find("Threshold value = 0 "), std::string::npos);
    EXPECT_NE(DisplayText(model).find("Dict var index set up? False\n"), std::string::npos);
}

TEST(NaiveBayesModel, KeepsItsFlags) {
    NaiveBayesModel model;
    model.SetPredictionOnly(true);
    model.SetNeedDerivedPredictor(true);
    EXPECT_TRUE(model.GetPredictionOnly());
    EXPECT_TRUE(model.NeedDerivedPredictor());
    model.SetPredictionOnly(false);
    model.SetNeedDerivedPredictor(false);
    EXPECT_FALSE(model.GetPredictionOnly());
    EXPECT_FALSE(model.NeedDerivedPredictor());
}

TEST(NaiveBayesModel, KeepsPredictorNamesInTheOrderAdded_UntilTheyAreReplaced) {
    NaiveBayesModel model;
    model.AddPredictorVar("b", nullptr);
    model.AddPredictorVar("a", nullptr);
    EXPECT_EQ(model.GetPredictorVarNames(), (std::vector<std::string>{"b", "a"}));
    model.SetPredictorVarNames({"c"});
    EXPECT_EQ(model.GetPredictorVarNames(), (std::vector<std::string>{"c"}));
}

TEST(NaiveBayesModel, DeletesItsEncoders_AndNoVariable) {
    int deletedByBase = 0;
    const auto target = TextVariable("play", {"yes"});
    const auto predictor = TextVariable("outlook", {"rain"});
    {
        NaiveBayesModel model;
        model.SetTargetVar(target.get());
        model.AddPredictorVar("outlook", predictor.get());
        model.AddEncoder(new CountedEncoder(deletedByBase));
        model.AddEncoder(new CountedEncoder(deletedByBase));
        model.SetPredCounts(0, {{1}});
        EXPECT_EQ(deletedByBase, 0);
    }
    EXPECT_EQ(deletedByBase, 2);
    EXPECT_EQ(predictor->GetName(), "outlook");
    EXPECT_EQ(target->GetValueLabelSet()->GetValueLabels()[0].GetValue()->GetString(), "yes");
}

TEST(NaiveBayesModel, TakesTheTargetsDeclaredValuesAsCategories) {
    const auto target = TextVariable("play", {"yes", "no"});
    NaiveBayesModel model;
    model.SetTargetVar(target.get());
    EXPECT_NE(DisplayText(model).find("Target categories: yesnoTarget"), std::string::npos);
}

TEST(NaiveBayesModel, KeepsItsCategories_WhenANewTargetDeclaresNone) {
    const auto first = TextVariable("play", {"yes", "no"});
    const auto second = TextVariable("other", {});
    NaiveBayesModel model;
    model.SetTargetVar(first.get());
    model.SetTargetVar(second.get());
    EXPECT_NE(DisplayText(model).find("Target categories: yesnoTarget"), std::string::npos);
}

/// A variable whose list of declared values is there and empty.
class VariableOfAnEmptyList : public BaseDictVar {
public:
    VariableOfAnEmptyList() : BaseDictVar("empty", StringStorage, Categorical) {}
    const ScoreValueLabelSet* GetValueLabelSet() const override { return &none; }

private:
    ScoreValueLabelSet none;
};

TEST(NaiveBayesModel, HasNoCategories_WhenANewTargetDeclaresAnEmptyList) {
    const auto first = TextVariable("play", {"yes", "no"});
    const VariableOfAnEmptyList second;
    NaiveBayesModel model;
    model.SetTargetVar(first.get());
    model.SetTargetVar(&second);
    EXPECT_NE(DisplayText(model).find("Target categories: Target category"), std::string::npos);
}

TEST(NaiveBayesModel, HasTheNewCategoriesOnly_WhenANewTargetDeclaresSome) {
    const auto first = TextVariable("play", {"yes", "no"});
    const auto second = TextVariable("other", {"x"});
    NaiveBayesModel model;
    model.SetTargetVar(first.get());
    model.SetTargetVar(second.get());
    EXPECT_NE(DisplayText(model).find("Target categories: xTarget"), std::string::npos);
}

TEST(NaiveBayesModel, HasNoCategories_WhenTheTargetIsTakenAway) {
    const auto target = TextVariable("play", {"yes", "no"});
    NaiveBayesModel model;
    model.SetTargetVar(target.get());
    model.SetTargetVar(nullptr);
    EXPECT_NE(DisplayText(model).find("Target variable: Target categories: Target category"), std::string::npos);
}

TEST(NaiveBayesModel, KeepsTheEarlierThresholdsPriors_WhenTheThresholdChangesLater) {
    const auto model = MakeModel(0.001, TextVariable("play", {"yes", "no"}), {3, 1}, {});
    model->SetThreshold(0.5);
    const auto scored = ScoreTexts(*model, {});
    EXPECT_EQ(scored.probabilities,
              (std::vector<double>{(0.001 + 3) / (2 * 0.001 + 1 / 0.001), (0.001 + 1) / (2 * 0.001 + 1 / 0.001)}));
    model->SetTargetCounts({3, 1});
    EXPECT_EQ(ScoreTexts(*model, {}).probabilities[0], (0.5 + 3) / (2 * 0.5 + 1 / 0.5));
}

TEST(NaiveBayesModel, KeepsTheEarlierThresholdsTables_WhenTheThresholdChangesLater) {
    NaiveBayesModel model;
    const auto variable = TextVariable("v", {"a", "b"});
    model.SetThreshold(0.5);
    for (const char* name : {"x", "y"}) {
        model.AddPredictorVar(name, variable.get());
        model.AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"a", "b"}));
    }
    model.SetPredCounts(0, {{3, 1}, {1, 1}});
    model.SetThreshold(2);
    model.SetPredCounts(1, {{3, 1}, {1, 1}});
    const nbscore::ModelTables tables = model.GetTables();
    const std::vector<nbscore::PredictorTables>& predictors = tables.classifiers.front().predictors;
    EXPECT_EQ(predictors.at(0).probabilities->at(0), (std::vector<double>{3.5 / 5, 1.5 / 3}));
    EXPECT_EQ(predictors.at(1).probabilities->at(0), (std::vector<double>{5.0 / 8, 3.0 / 6}));
}

TEST(NaiveBayesModel, AppendsCountTables_WhateverIndexIsNamed) {
    NaiveBayesModel model;
    const auto variable = TextVariable("v", {"a"});
    model.SetThreshold(0.5);
    for (const char* name : {"x", "y"})
        model.AddPredictorVar(name, variable.get());
    model.SetPredCounts(17, {{1, 2}});
    model.SetPredCounts(-3, {{4, 5}});
    const std::string text = DisplayText(model);
    EXPECT_LT(text.find("       1        2 "), text.find("       4        5 "));
    EXPECT_NE(text.find("       4        5 "), std::string::npos);
}

TEST(NaiveBayesModel, ShiftsLaterTables_WhenOnePredictorIsGivenTwo) {
    auto model = MakeModel(0.5, TextVariable("play", {"yes", "no"}), {1, 1}, {});
    const auto a = TextVariable("a", {"x"});
    const auto b = TextVariable("b", {"x"});
    for (const auto* var : {a.get(), b.get()}) {
        model->AddPredictorVar(var->GetName(), var);
        model->AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"x"}));
    }
    model->SetPredCounts(0, {{9, 1}, {1, 9}});
    model->SetPredCounts(0, {{2, 7}, {7, 2}});
    // The second table given for the first predictor serves the second one.
    const auto scored = ScoreTexts(*model, {{"b", "x"}});
    const double yes = (0.5 + 2) / (2 * 0.5 + 9);
    const double no = (0.5 + 7) / (2 * 0.5 + 9);
    EXPECT_NEAR(scored.probabilities[0], yes / (yes + no), 1e-15);
}

}  // namespace

#include "selflearning/SelfLearningModel.h"

#include <gtest/gtest.h>

#include "naivebayes/CountedEncoder.h"
#include "selflearning/SetParts.h"

namespace {

using nbscore::test::CountedEncoder;
using nbscore::test::Describe;
using nbscore::test::Descriptor;
using nbscore::test::DisplayText;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::NumberVariable;
using nbscore::test::TextVariable;

using Names = std::vector<std::string>;

const double missing = NumericValue::GetSysmisValue();

/// A set of so many sub-models without predictors, each of which counts its target's two values once.
std::unique_ptr<SelfLearningModel> Bare(int number) {
    std::vector<nbscore::test::SubModelPart> parts(static_cast<std::size_t>(number), {"", 1, {1, 1}, {}});
    return MakeSet(TextVariable("play", {"yes", "no"}), parts);
}

/// One figure of each sub-model, read back by scoring a case.
std::vector<double> Figures(SelfLearningModel& set, double Descriptor::*figure) {
    std::vector<double> figures;
    for (const Descriptor& descriptor : Describe(set, NamedRecord()))
        figures.push_back(descriptor.*figure);
    return figures;
}

TEST(SelfLearningModel, HasNothingSet_WhenNew) {
    SelfLearningModel set;
    EXPECT_EQ(set.GetModelType(), 25);
    EXPECT_EQ(set.GetNumOfModels(), 0);
    EXPECT_FALSE(set.GetPredictionOnly());
    EXPECT_FALSE(set.NeedDerivedPredictor());
    EXPECT_TRUE(set.GetModelNames().empty());
    EXPECT_TRUE(set.GetAllModelNames().empty());
    EXPECT_TRUE(set.GetPredictorVarNames().empty());
    EXPECT_EQ(set.GetDictionary(), nullptr);
    EXPECT_EQ(set.GetTargetVar(), nullptr);
}

TEST(SelfLearningModel, KeepsItsFlags) {
    SelfLearningModel set;
    set.SetPredictionOnly(true);
    set.SetNeedDerivedPredictor(true);
    EXPECT_TRUE(set.GetPredictionOnly());
    EXPECT_TRUE(set.NeedDerivedPredictor());
    set.SetPredictionOnly(false);
    set.SetNeedDerivedPredictor(false);
    EXPECT_FALSE(set.GetPredictionOnly());
    EXPECT_FALSE(set.NeedDerivedPredictor());
}

TEST(SelfLearningModel, HasNamelessUnassessedSubModels_WhenTheyAreOnlyCounted) {
    const auto set = Bare(3);
    EXPECT_EQ(set->GetNumOfModels(), 3);
    EXPECT_EQ(set->GetModelNames(), Names(3));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentMean), std::vector<double>(3, missing));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentStdDev), std::vector<double>(3, missing));
}

TEST(SelfLearningModel, KeepsEachSubModelsNameAndFigures) {
    const auto set = Bare(3);
    set->SetModelName(2, "c");
    set->SetModelName(0, "a");
    set->SetAssessmentMeanValues(1, 0.5);
    set->SetAssessmentMeanValues(1, 0.75);
    set->SetAssessmentStdDevValues(2, 0.25);
    EXPECT_EQ(set->GetModelNames(), (Names{"a", "", "c"}));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentMean), (std::vector<double>{missing, 0.75, missing}));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentStdDev), (std::vector<double>{missing, missing, 0.25}));
}

TEST(SelfLearningModel, IgnoresNamesAndFigures_WhenThereIsNoSuchSubModel) {
    const auto set = Bare(3);
    for (const int model : {-1, 3, 4, -2147483647 - 1, 2147483647}) {
        set->SetModelName(model, "nobody");
        set->SetAssessmentMeanValues(model, 1);
        set->SetAssessmentStdDevValues(model, 1);
    }
    EXPECT_EQ(set->GetModelNames(), Names(3));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentMean), std::vector<double>(3, missing));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentStdDev), std::vector<double>(3, missing));
}

TEST(SelfLearningModel, LeavesAnEncoderToItsCaller_WhenThereIsNoSuchSubModel) {
    int deletions = 0;
    const auto encoder = std::make_unique<CountedEncoder>(deletions);
    {
        SelfLearningModel set;
        set.SetNumOfModels(2);
        for (const int model : {-1, 2})
            set.AddEncoder(model, 0, encoder.get());
    }
    EXPECT_EQ(deletions, 0);
}

TEST(SelfLearningModel, IgnoresCounts_WhenThereIsNoSuchSubModel) {
    const auto set = Bare(1);
    const std::string before = DisplayText(*set);
    for (const int model : {-1, 1})
        set->SetPredCounts(model, 0, {{1, 1}});
    EXPECT_EQ(DisplayText(*set), before);
}

TEST(SelfLearningModel, DeletesItsEncoders_AndNoVariable) {
    int deletions = 0;
    const auto target = TextVariable("play", {"yes"});
    const auto predictor = TextVariable("outlook", {"rain"});
    {
        SelfLearningModel set;
        set.SetNumOfModels(2);
        set.SetTargetVar(target.get());
        for (const int model : {0, 1, 1}) {
            set.AddPredictorVar(model, "outlook", predictor.get());
            set.AddEncoder(model, 0, new CountedEncoder(deletions));
        }
        set.AddEncoder(0, 0, nullptr);
        EXPECT_EQ(deletions, 0);
    }
    EXPECT_EQ(deletions, 3);
    EXPECT_EQ(predictor->GetName(), "outlook");
    EXPECT_EQ(target->GetValueLabelSet()->GetValueLabels()[0].GetValue()->GetString(), "yes");
}

TEST(SelfLearningModel, KeepsTablesInTheOrderOfTheCalls_WhateverPredictorIsNamed) {
    SelfLearningModel set;
    set.SetNumOfModels(1);
    set.SetThreshold(0.5);
    set.SetTargetCounts({1, 1});
    const auto variable = TextVariable("v", {"a"});
    for (int j = 0; j < 2; ++j)
        set.AddPredictorVar(0, "v", variable.get());
    set.SetPredCounts(0, 5, {{1, 2}});
    set.SetPredCounts(0, 5, {{4, 5}});
    const std::string text = DisplayText(set);
    EXPECT_LT(text.find("       1        2 "), text.find("       4        5 "));
    EXPECT_NE(text.find("       4        5 "), std::string::npos);
}

TEST(SelfLearningModel, KeepsEncodersInTheOrderOfTheCalls_WhateverPredictorIsNamed) {
    int deletions = 0;
    const auto set = Bare(1);
    const auto variable = TextVariable("v", {"a"});
    for (const int code : {1, 0}) {
        set->AddPredictorVar(0, "v", variable.get());
        set->AddEncoder(0, 7, new CountedEncoder(deletions, code));
        set->SetPredCounts(0, -3, {{1, 5}, {9, 1}});
    }
    // Codes 1 and 0: 9.../11 * 1.../11 against 1.../7 * 5.../7, each with the pseudo-count 1 and two rows.
    const double yes = 0.5 * (10.0 / 12) * (2.0 / 12);
    const double no = 0.5 * (2.0 / 8) * (6.0 / 8);
    EXPECT_DOUBLE_EQ(nbscore::test::Scores(*set, nbscore::test::TextRecord({{"v", "a"}}))[0], no / (yes + no));
}

TEST(SelfLearningModel, MakesATableWithItsOwnSubModelsThreshold) {
    const auto variable = TextVariable("v", {"a"});
    SelfLearningModel two;
    two.SetNumOfModels(2);
    two.SetThreshold(0.5);
    two.SetThreshold(2);
    for (const int model : {0, 1}) {
        two.SetTargetCounts({1, 1});
        two.AddPredictorVar(model, "v", variable.get());
        two.SetPredCounts(model, 0, {{3, 1}, {1, 1}});
    }
    const std::string text = DisplayText(two);
    EXPECT_NE(text.find("     0.7      0.5 "), std::string::npos) << text;  // 3.5 / 5, 1.5 / 3
    EXPECT_NE(text.find("   0.625      0.5 "), std::string::npos) << text;  // 5 / 8, 3 / 6
}

TEST(SelfLearningModel, KeepsWhatSubModelsHaveButNamesAndFigures_WhenCountedAgain) {
    int deletions = 0;
    const auto set = Bare(2);
    const auto variable = TextVariable("v", {"a"});
    set->AddPredictorVar(0, "v", variable.get());
    set->AddEncoder(0, 0, new CountedEncoder(deletions));
    set->SetPredCounts(0, 0, {{1, 5}});
    const std::string before = DisplayText(*set);
    set->SetModelName(0, "a");
    set->SetAssessmentMeanValues(0, 1);
    set->SetAssessmentStdDevValues(1, 1);
    set->SetNumOfModels(2);
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(set->GetModelNames(), Names(2));
    EXPECT_EQ(DisplayText(*set), before);
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentMean), std::vector<double>(2, missing));
    EXPECT_EQ(Figures(*set, &Descriptor::assessmentStdDev), std::vector<double>(2, missing));
}

TEST(SelfLearningModel, KeepsThresholdsAndTargetCounts_WhenCountedAgain) {
    const auto set = MakeSet(TextVariable("play", {"yes", "no"}), {{"a", 1, {3, 1}, {}}, {"b", 2, {5, 7}, {}}});
    set->SetNumOfModels(1);
    EXPECT_EQ(set->GetNumOfModels(), 1);
    EXPECT_EQ(set->GetModelNames(), Names(1));
    set->SetNumOfModels(2);
    EXPECT_EQ(Figures(*set, &Descriptor::score), (std::vector<double>{2.0 / 3, 9 / 4.5}));
}

TEST(SelfLearningModel, DropsPredictors_WhenCountedDown) {
    const auto set = MakeSet(TextVariable("play", {"yes", "no"}),
                             {{"a", 1, {3, 1}, {}}, {"b", 2, {5, 7}, {{"x", {"p"}, {{1, 5}}}}}});
    set->SetNumOfModels(1);
    set->SetNumOfModels(2);
    EXPECT_TRUE(set->Describe().classifiers.at(1).inputs.empty());
    EXPECT_EQ(set->Describe().classifiers.at(1).threshold, 2);
}

TEST(SelfLearningModel, TakesThresholdsAndTargetCounts_BeforeItHasAnySubModel) {
    const auto target = TextVariable("play", {"yes", "no"});
    SelfLearningModel set;
    for (const double threshold : {1.0, 2.0}) {
        set.SetThreshold(threshold);
        set.SetTargetCounts({5, 7});
    }
    set.SetTargetVar(target.get());
    EXPECT_TRUE(set.GetModelNames().empty());
    EXPECT_TRUE(set.Describe().classifiers.empty());
    set.SetNumOfModels(2);
    EXPECT_EQ(Figures(set, &Descriptor::score), (std::vector<double>{8.0 / 3, 9 / 4.5}));
    EXPECT_EQ(Figures(set, &Descriptor::assessmentMean), std::vector<double>(2, missing));
}

TEST(SelfLearningModel, DropsSurplusSubModels_WhenCountedDown) {
    int deletions = 0;
    {
        SelfLearningModel set;
        set.SetNumOfModels(2);
        for (const int model : {0, 1})
            set.AddEncoder(model, 0, new CountedEncoder(deletions));
        set.SetNumOfModels(1);
    }
    EXPECT_EQ(deletions, 2);
}

TEST(SelfLearningModel, TakesTheTargetsDeclaredValuesAsCategories) {
    const auto first = TextVariable("play", {"yes", "no"});
    const auto none = TextVariable("other", {});
    const auto third = TextVariable("third", {"x"});
    SelfLearningModel set;
    set.SetTargetVar(first.get());
    EXPECT_NE(DisplayText(set).find("Target categories: yesnoDict"), std::string::npos);
    set.SetTargetVar(none.get());
    EXPECT_NE(DisplayText(set).find("Target categories: yesnoDict"), std::string::npos);
    set.SetTargetVar(third.get());
    EXPECT_NE(DisplayText(set).find("Target categories: xDict"), std::string::npos);
    set.SetTargetVar(nullptr);
    EXPECT_NE(DisplayText(set).find("Target variable: Target categories: Dict"), std::string::npos);
}

TEST(SelfLearningModel, ReplacesTheNamesWhosePositionsAreNoted) {
    SelfLearningModel set;
    set.SetPredictorVarNames({"b", "a"});
    EXPECT_EQ(set.GetPredictorVarNames(), (Names{"b", "a"}));
    set.SetPredictorVarNames({"c"});
    EXPECT_EQ(set.GetPredictorVarNames(), Names{"c"});
}

TEST(SelfLearningModel, AppendsAFieldsDeclaredValuesToAllModelNames) {
    auto offers = std::make_unique<BaseDictionary>();
    offers->AddVar("offer", TextVariable("offer", {"card", "loan"}).release());
    offers->AddVar("number", NumberVariable("number", {1, 2.5}).release());
    SelfLearningModel named;
    named.SetScoreDictionary(offers.release());
    EXPECT_TRUE(named.SetAllModelNames("offer"));
    EXPECT_EQ(named.GetAllModelNames(), (Names{"card", "loan"}));
    EXPECT_TRUE(named.SetAllModelNames("number"));
    EXPECT_TRUE(named.SetAllModelNames("offer"));
    EXPECT_EQ(named.GetAllModelNames(), (Names{"card", "loan", "1", "2.5", "card", "loan"}));
    EXPECT_TRUE(named.GetModelNames().empty());
}

TEST(SelfLearningModel, KeepsAllModelNames_WhenAFieldCannotGiveAny) {
    SelfLearningModel set;
    EXPECT_FALSE(set.SetAllModelNames("offer"));
    auto fields = std::make_unique<BaseDictionary>();
    fields->AddVar("offer", TextVariable("offer", {"card"}).release());
    fields->AddVar("undeclared", TextVariable("undeclared", {}).release());
    set.SetScoreDictionary(fields.release());
    EXPECT_TRUE(set.SetAllModelNames("offer"));
    for (const char* name : {"unknown", "undeclared", "", "offer,undeclared"})
        EXPECT_FALSE(set.SetAllModelNames(name)) << name;
    EXPECT_EQ(set.GetAllModelNames(), Names{"card"});
}

TEST(SelfLearningModelDeathTest, StopsTheProcess_WhenAPredictorIsAddedToNoSubModel) {
    SelfLearningModel set;
    set.SetNumOfModels(1);
    EXPECT_DEATH(set.AddPredictorVar(1, "v", nullptr), "");
    EXPECT_DEATH(set.AddPredictorVar(-1, "v", nullptr), "");
}

TEST(SelfLearningModelDeathTest, StopsTheProcess_WhenASubModelIsCountedBeforeItsThreshold) {
    SelfLearningModel set;
    set.SetNumOfModels(2);
    set.SetThreshold(1);
    set.SetPredCounts(0, 0, {{1, 1}});
    EXPECT_DEATH(set.SetPredCounts(1, 0, {{1, 1}}), "");
}

}  // namespace

#include <gtest/gtest.h>

#include <limits>

#include "naivebayes/FlushedText.h"
#include "naivebayes/MarkedVariable.h"
#include "selflearning/SetParts.h"

namespace {

using nbscore::test::DisplayText;
using nbscore::test::MarkedVariable;

/// A target that prints a mark and declares 0 and 1.
std::unique_ptr<BaseDictVar> MarkedTarget() {
    auto target = std::make_unique<MarkedVariable>("y");
    target->AddValidValue(std::make_unique<NumericValue>(0), "");
    target->AddValidValue(std::make_unique<NumericValue>(1), "");
    return target;
}

TEST(SelfLearningDisplay, EndsAfterItsHead_WhenThereIsNoSubModel) {
    EXPECT_EQ(DisplayText(SelfLearningModel()),
              "\nBegin Display of SelfLearningModel.\n"
              "Input variable names: False.\n"
              "Target variable: Target categories: Dict var index set up? False\n"
              "End of SelfLearningModel display.\n");
}

TEST(SelfLearningDisplay, WritesTheFlagBehindTheNames_AndTargetCategoriesBackToBack) {
    const auto target = MarkedTarget();
    SelfLearningModel set;
    set.SetTargetVar(target.get());
    set.SetPredictorVarNames({"a", "b"});
    set.SetPredictionOnly(true);
    ScoreResult* result = nullptr;
    const BaseCaseRecord record({"a"});
    set.GetScore(&record, result, false);
    const std::unique_ptr<ScoreResult> owned(result);
    EXPECT_EQ(DisplayText(set),
              "\nBegin Display of SelfLearningModel.\n"
              "Input variable names: a b True.\n"
              "Target variable: <y>\n"
              "Target categories: 01Dict var index set up? True\n"
              "End of SelfLearningModel display.\n");
}

TEST(SelfLearningDisplay, WritesEverySubModel_AndNoNameNorFigure) {
    const auto target = MarkedTarget();
    const MarkedVariable first("a"), second("b");
    SelfLearningModel set;
    set.SetNumOfModels(2);
    set.SetTargetVar(target.get());
    set.SetPredictorVarNames({"a", "b", "c"});
    set.SetPredictionOnly(true);
    for (const int model : {0, 1}) {
        set.SetModelName(model, "never written");
        set.SetAssessmentMeanValues(model, 77);
        set.SetThreshold(model == 0 ? 0.5 : 0.001);
        set.SetTargetCounts({3, 1.5});
        set.AddPredictorVar(model, "a", &first);
        set.AddEncoder(model, 0, new NBCatStringEncoder(std::vector<std::string>{"p"}));
        set.SetPredCounts(model, 0, {{3, 1}});
    }
    set.AddPredictorVar(0, "b", &second);
    set.AddEncoder(0, 1, new NBCatStringEncoder(2));
    set.SetPredCounts(0, 1, {{}});
    const std::string table =
        "Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 1, target categories: 2\n"
        "Category 0: Counts   (2 elements): \n"
        "       3        1 \n"
        "Probability_{mk}^j (2 elements): \n"
        "       1        1 \n"
        "End of NBayesInputBase display.\n";
    EXPECT_EQ(DisplayText(set),
              "\nBegin Display of SelfLearningModel.\n"
              "Input variable names: a b c True.\n"
              "Target variable: <y>\n"
              "Target categories: 01Dict var index set up? False\n"
              "\nThreshold value = 0.5 Only prediction? Encoders: \n"
              "\tNBCatStringEncoder object:  Last code = 0\n"
              "\t\t0\t\tp\n"
              "\tNBCatStringEncoder object:  Last code = -1\n"
              "Target category counts: 3 1.5 Predictor variables and their stats:<a>\n" +
                  table +
                  "<b>\n"
                  "Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 0, "
                  "target categories: 0\n"
                  "Category 0: Counts  : <empty>\n"
                  "Probability_{mk}^j: <empty>\n"
                  "End of NBayesInputBase display.\n"
                  "\nThreshold value = 0.001 Only prediction? Encoders: \n"
                  "\tNBCatStringEncoder object:  Last code = 0\n"
                  "\t\t0\t\tp\n"
                  "Target category counts: 3 1.5 Predictor variables and their stats:<a>\n" +
                  table + "End of SelfLearningModel display.\n");
}

TEST(SelfLearningDisplay, FlushesBehindEachLine) {
    SelfLearningModel set;
    set.SetNumOfModels(1);
    set.SetThreshold(0.5);
    set.SetTargetCounts({3});
    EXPECT_EQ(nbscore::test::DisplayedPieces(set),
              (std::vector<std::string>{
                  "\nBegin Display of SelfLearningModel.\n", "Input variable names: False.\n",
                  "Target variable: Target categories: Dict var index set up? False\n", "\n",
                  "Threshold value = 0.5 Only prediction? Encoders: \n",
                  "Target category counts: 3 Predictor variables and their stats:End of SelfLearningModel "
                  "display.\n"}));
}

TEST(SelfLearningDisplay, WritesNanWithoutSign) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    SelfLearningModel set;
    set.SetNumOfModels(1);
    set.SetThreshold(-nan);
    set.SetTargetCounts({-nan});
    EXPECT_NE(
        DisplayText(set).find("\nThreshold value = nan Only prediction? Encoders: \nTarget category counts: nan "),
        std::string::npos);
}

TEST(SelfLearningDisplay, PrintsNothingForAVariable_WhenItIsNull) {
    SelfLearningModel set;
    set.SetNumOfModels(1);
    set.SetThreshold(1);
    set.SetTargetCounts({1, 1});
    set.AddPredictorVar(0, "a", nullptr);
    set.SetPredCounts(0, 0, {{1}});
    EXPECT_NE(DisplayText(set).find("stats:Begin NBayesInputBase object."), std::string::npos);
}

TEST(SelfLearningDisplayDeathTest, StopsWithAMessage_WhenAnEncoderIsNull) {
    SelfLearningModel set;
    set.SetNumOfModels(1);
    set.SetThreshold(1);
    set.SetTargetCounts({1, 1});
    set.AddEncoder(0, 0, nullptr);
    EXPECT_DEATH(DisplayText(set), "a part of the model that scoring needs does not exist");
}

}  // namespace

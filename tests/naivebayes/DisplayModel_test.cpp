#include <gtest/gtest.h>

#include <limits>

#include "FlushedText.h"
#include "MarkedVariable.h"
#include "ModelParts.h"
#include "ScoredCase.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace {

using nbscore::test::DisplayedPieces;
using nbscore::test::DisplayText;
using nbscore::test::MakeModel;
using nbscore::test::MarkedVariable;
using nbscore::test::NumberVariable;
using nbscore::test::TextVariable;

std::unique_ptr<BaseDictVar> MarkedTarget() {
    auto target = std::make_unique<MarkedVariable>("y");
    target->AddValidValue(std::make_unique<NumericValue>(0), "");
    target->AddValidValue(std::make_unique<NumericValue>(1), "");
    return target;
}

TEST(DisplayModel, WritesNothingBetweenTheLabels_WhenTheModelIsEmpty) {
    EXPECT_EQ(DisplayText(NaiveBayesModel()),
              "\nBegin Display of NaiveBayesModel.\n"
              "Input variable names: \n"
              "Threshold value = 0 Only prediction? False.\n"
              "Encoders: \n"
              "Target variable: Target categories: Target category counts: \n"
              "Target probabilities: \n"
              "Dict var index set up? False\n"
              "Predictor variables and their stats:End of NaiveBayesModel display.\n");
}

TEST(DisplayModel, WritesTargetCategoriesBackToBack) {
    const auto model = MakeModel(0.5, MarkedTarget(), {3, 1}, {});
    EXPECT_EQ(DisplayText(*model),
              "\nBegin Display of NaiveBayesModel.\n"
              "Input variable names: \n"
              "Threshold value = 0.5 Only prediction? False.\n"
              "Encoders: \n"
              "Target variable: <y>\n"
              "Target categories: 01Target category counts: 3 1 \n"
              "Target probabilities: 1.16667 0.5 \n"
              "Dict var index set up? False\n"
              "Predictor variables and their stats:End of NaiveBayesModel display.\n");
}

TEST(DisplayModel, WritesEncodersAndTables_WhenThereArePredictors) {
    const auto model = MakeModel(0.5, MarkedTarget(), {3, 1}, {});
    const MarkedVariable first("a");
    const MarkedVariable second("b");
    model->AddPredictorVar("a", &first);
    model->AddPredictorVar("b", &second);
    model->AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"p"}));
    model->AddEncoder(new NBCatStringEncoder(2));
    model->SetPredCounts(0, {{3, 1}});
    model->SetPredCounts(1, {{}});
    model->SetPredictionOnly(true);
    nbscore::test::Score(*model, BaseCaseRecord({"a"}));
    EXPECT_EQ(DisplayText(*model),
              "\nBegin Display of NaiveBayesModel.\n"
              "Input variable names: a b \n"
              "Threshold value = 0.5 Only prediction? True.\n"
              "Encoders: \n"
              "\tNBCatStringEncoder object:  Last code = 0\n"
              "\t\t0\t\tp\n"
              "\tNBCatStringEncoder object:  Last code = -1\n"
              "Target variable: <y>\n"
              "Target categories: 01Target category counts: 3 1 \n"
              "Target probabilities: 1.16667 0.5 \n"
              "Dict var index set up? True\n"
              "Predictor variables and their stats:<a>\n"
              "Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 1, "
              "target categories: 2\n"
              "Category 0: Counts   (2 elements): \n"
              "       3        1 \n"
              "Probability_{mk}^j (2 elements): \n"
              "       1        1 \n"
              "End of NBayesInputBase display.\n"
              "<b>\n"
              "Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 0, "
              "target categories: 0\n"
              "Category 0: Counts  : <empty>\n"
              "Probability_{mk}^j: <empty>\n"
              "End of NBayesInputBase display.\n"
              "End of NaiveBayesModel display.\n");
}

using Pieces = std::vector<std::string>;

TEST(DisplayModel, FlushesBehindEachLine) {
    EXPECT_EQ(DisplayedPieces(NaiveBayesModel()),
              (Pieces{"\nBegin Display of NaiveBayesModel.\n", "Input variable names: \n",
                      "Threshold value = 0 Only prediction? False.\n", "Encoders: \n",
                      "Target variable: Target categories: Target category counts: \n", "Target probabilities: \n",
                      "Dict var index set up? False\n",
                      "Predictor variables and their stats:End of NaiveBayesModel display.\n"}));
}

TEST(DisplayModel, FlushesBehindEachLineOfAnEncoder) {
    EXPECT_EQ(DisplayedPieces(NBCatStringEncoder(Pieces{"a", "b"})),
              (Pieces{"\tNBCatStringEncoder object:  Last code = 1\n", "\t\t0\t\ta\n", "\t\t1\t\tb\n"}));
    EXPECT_EQ(DisplayedPieces(NBCatNumericEncoder(std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8})),
              (Pieces{"\tNBCatNumericEncoder: Last code = 7\n", "\t\tNumeric values of categories: 1 2 3 4 5 6 7 \n",
                      "8 \n"}));
    EXPECT_EQ(DisplayedPieces(NBinningEncoder(std::vector<double>{5})),
              (Pieces{"\tNBinningEncoder: number of bins = 2\n", "\t\tCutpoints: 5 \n"}));
}

// The lines of its vectors only end.
TEST(DisplayModel, FlushesBehindTheFirstAndLastLineOfATable) {
    NBayesInputBase table;
    table.SetCounts(0.5, {{}});
    EXPECT_EQ(DisplayedPieces(table),
              (Pieces{"Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 0, target "
                      "categories: 0\n",
                      "Category 0: Counts  : <empty>\nProbability_{mk}^j: <empty>\nEnd of NBayesInputBase "
                      "display.\n"}));
}

TEST(DisplayModel, WritesNanWithoutSign) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto model = MakeModel(-nan, MarkedTarget(), {-nan}, {});
    const std::string text = DisplayText(*model);
    EXPECT_NE(text.find("Threshold value = nan Only"), std::string::npos);
    EXPECT_NE(text.find("counts: nan \nTarget probabilities: nan \n"), std::string::npos);
}

TEST(DisplayModel, PrintsNothingForAVariable_WhenItIsNull) {
    NaiveBayesModel model;
    model.SetThreshold(1);
    model.AddPredictorVar("a", nullptr);
    model.SetPredCounts(0, {{1}});
    EXPECT_NE(DisplayText(model).find("stats:Begin NBayesInputBase object."), std::string::npos);
}

TEST(DisplayModelDeathTest, StopsWithAMessage_WhenAnEncoderIsNull) {
    NaiveBayesModel model;
    model.AddEncoder(nullptr);
    EXPECT_DEATH(DisplayText(model), "a part of the model that scoring needs does not exist");
}

}  // namespace

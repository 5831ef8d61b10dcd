#include "naivebayes/NBayesInputBase.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numeric>

#include "ModelParts.h"

namespace {

using nbscore::test::DisplayText;
using Matrix = NBayesInputBase::Matrix;

NBayesInputBase Table(double threshold, const Matrix& counts) {
    NBayesInputBase table;
    table.SetCounts(threshold, counts);
    return table;
}

TEST(NBayesInputBase, HasNoSizesAndNoRows_WhenNew) {
    const NBayesInputBase table;
    EXPECT_EQ(table.GetNumCategories(), -1);
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 0);
    EXPECT_EQ(table.GetNumTargetCategories(), -1);
    EXPECT_TRUE(table.GetCounts().empty());
    EXPECT_TRUE(table.GetProbabilities().empty());
}

TEST(NBayesInputBase, HoldsZeros_WhenMadeWithSizes) {
    const NBayesInputBase table(2, 3);
    EXPECT_EQ(table.GetNumCategories(), 2);
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 0);
    EXPECT_EQ(table.GetNumTargetCategories(), 3);
    EXPECT_EQ(table.GetCounts(), (Matrix{{0, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(table.GetProbabilities(), (Matrix{{0, 0, 0}, {0, 0, 0}}));
}

TEST(NBayesInputBase, IsEmptyButKeepsTheNumbers_WhenMadeWithNegativeSizes) {
    const NBayesInputBase table(-2, -3);
    EXPECT_EQ(table.GetNumCategories(), -2);
    EXPECT_EQ(table.GetNumTargetCategories(), -3);
    EXPECT_TRUE(table.GetCounts().empty());
}

TEST(NBayesInputBase, KeepsWhatIsInRange_WhenResized) {
    NBayesInputBase table = Table(1, {{1, 2}, {3, 4}});
    EXPECT_EQ(table.SetSize(3, 1), 0);
    EXPECT_EQ(table.GetNumCategories(), 3);
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 0);
    EXPECT_EQ(table.GetNumTargetCategories(), 1);
    EXPECT_EQ(table.GetCounts(), (Matrix{{1}, {3}, {0}}));
}

TEST(NBayesInputBase, SmoothsWithTheThreshold_WhenCountsAreSet) {
    NBayesInputBase table;
    EXPECT_EQ(table.SetCounts(0.5, {{3, 1}, {1, 2}}), 0);
    EXPECT_EQ(table.GetNumCategories(), 2);
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 2);
    EXPECT_EQ(table.GetNumTargetCategories(), 2);
    EXPECT_EQ(table.GetProbabilities(), (Matrix{{(0.5 + 3) / (2 * 0.5 + 4), (0.5 + 1) / (2 * 0.5 + 3)},
                                                {(0.5 + 1) / (2 * 0.5 + 4), (0.5 + 2) / (2 * 0.5 + 3)}}));
}

TEST(NBayesInputBase, GivesAnEmptyCategoryAProbability_ButDoesNotCountIt) {
    const NBayesInputBase table = Table(0.5, {{3, 1}, {0, 0}, {1, 2}});
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 2);
    EXPECT_EQ(table.GetProbabilities()[1], (std::vector<double>{0.5 / (2 * 0.5 + 4), 0.5 / (2 * 0.5 + 3)}));
}

TEST(NBayesInputBase, DoesNotCountACategory_WhenItsTotalIsNotAboveZero) {
    EXPECT_EQ(Table(0.5, {{3, 1}, {2, -2}, {-1, 0}}).GetNumNonEmptyCategories(), 1);
}

TEST(NBayesInputBase, MakesEveryProbabilityTheThreshold_WhenEveryCountIsZero) {
    const NBayesInputBase table = Table(0.001, {{0, 0}, {0, 0}});
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 0);
    EXPECT_EQ(table.GetProbabilities(), (Matrix{{0.001, 0.001}, {0.001, 0.001}}));
}

TEST(NBayesInputBase, SharesATargetCategoryAlike_WhenItWasNeverCounted) {
    const NBayesInputBase table = Table(0.25, {{3, 0}, {1, 0}});
    EXPECT_EQ(table.GetProbabilities()[0][1], 0.5);
    EXPECT_EQ(table.GetProbabilities()[1][1], 0.5);
}

TEST(NBayesInputBase, StoresNaN_WhenThresholdAndColumnTotalAreZero) {
    EXPECT_TRUE(std::isnan(Table(0, {{3, 0}, {1, 0}}).GetProbabilities()[0][1]));
}

TEST(NBayesInputBase, PadsRowsWithZeros_WhenTheirLengthsDiffer) {
    const NBayesInputBase table = Table(1, {{1}, {}, {2, 3, 4}, {5, 6}});
    EXPECT_EQ(table.GetNumTargetCategories(), 3);
    EXPECT_EQ(table.GetCounts(), (Matrix{{1, 0, 0}, {0, 0, 0}, {2, 3, 4}, {5, 6, 0}}));
    EXPECT_EQ(table.GetProbabilities().size(), 4u);
    for (const auto& row : table.GetProbabilities())
        EXPECT_EQ(row.size(), 3u);
}

TEST(NBayesInputBase, HoldsOnlyTheNewCounts_WhenCountsAreSetAgain) {
    NBayesInputBase table = Table(1, {{1, 2}, {3, 4}, {5, 6}});
    table.SetCounts(1, {{7}, {8, 9}});
    EXPECT_EQ(table.GetCounts(), (Matrix{{7, 0}, {8, 9}}));
    EXPECT_EQ(table.GetNumCategories(), 2);
}

TEST(NBayesInputBase, HasNoTargetCategories_WhenAllRowsAreEmpty) {
    const NBayesInputBase table = Table(1, {{}, {}});
    EXPECT_EQ(table.GetNumCategories(), 2);
    EXPECT_EQ(table.GetNumTargetCategories(), 0);
    EXPECT_EQ(table.GetNumNonEmptyCategories(), 0);
}

TEST(NBayesInputBase, ComputesAgain_WhenAskedWithAnotherThreshold) {
    NBayesInputBase table = Table(1, {{1, 0}, {3, 4}});
    EXPECT_EQ(table.ComputeProbabilities(2), 2);
    EXPECT_EQ(table.GetProbabilities()[0][0], (2.0 + 1.0) / (2 * 2.0 + 4.0));
}

TEST(NBayesInputBaseDeathTest, StopsTheProcess_WhenThereAreNoRowsAtAll) {
    NBayesInputBase table;
    EXPECT_DEATH(table.SetCounts(1, {}), "");
}

RC_GTEST_PROP(NBayesInputBase, MakesEveryColumnSumToOne_WhenNoCategoryIsEmpty, ()) {
    const auto rows = *rc::gen::inRange(1, 6);
    const auto columns = *rc::gen::inRange(1, 6);
    Matrix counts(static_cast<std::size_t>(rows), std::vector<double>(static_cast<std::size_t>(columns)));
    for (auto& row : counts) {
        for (double& count : row)
            count = *rc::gen::inRange(1, 1000);
    }
    const NBayesInputBase table = Table(0.01, counts);
    for (std::size_t j = 0; j < counts[0].size(); ++j) {
        double sum = 0;
        for (const auto& row : table.GetProbabilities())
            sum += row[j];
        RC_ASSERT(std::abs(sum - 1) < 1e-12);
    }
}

TEST(NBayesInputBaseDisplay, WritesSizesOnly_WhenNew) {
    EXPECT_EQ(DisplayText(NBayesInputBase()),
              "Begin NBayesInputBase object. Number of categories: -1, non-empty categories: 0, "
              "target categories: -1\n"
              "End of NBayesInputBase display.\n");
}

TEST(NBayesInputBaseDisplay, WritesCountsAndProbabilitiesOfEachCategory) {
    EXPECT_EQ(DisplayText(Table(0.5, {{3, 1}, {0, 0}})),
              "Begin NBayesInputBase object. Number of categories: 2, non-empty categories: 1, "
              "target categories: 2\n"
              "Category 0: Counts   (2 elements): \n"
              "       3        1 \n"
              "Probability_{mk}^j (2 elements): \n"
              "       1        1 \n"
              "Category 1: Counts   (2 elements): \n"
              "       0        0 \n"
              "Probability_{mk}^j (2 elements): \n"
              " 0.14286  0.33333 \n"
              "End of NBayesInputBase display.\n");
}

TEST(NBayesInputBaseDisplay, WritesEmpty_WhenRowsHaveNoEntries) {
    EXPECT_EQ(DisplayText(Table(0.5, {{}})),
              "Begin NBayesInputBase object. Number of categories: 1, non-empty categories: 0, "
              "target categories: 0\n"
              "Category 0: Counts  : <empty>\n"
              "Probability_{mk}^j: <empty>\n"
              "End of NBayesInputBase display.\n");
}

}  // namespace

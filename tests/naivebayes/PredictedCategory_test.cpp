#include "naivebayes/PredictedCategory.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <limits>
#include <vector>

#include "support/BruteForceScorer.h"

namespace {

using Numbers = std::vector<double>;

std::size_t PredictedCategory(const Numbers& probabilities, const Numbers& targetCounts) {
    return nbscore::PredictedCategory(probabilities, targetCounts);
}

const double nan = std::numeric_limits<double>::quiet_NaN();

TEST(PredictedCategory, IsTheMostProbableOne) {
    EXPECT_EQ(PredictedCategory({0.2, 0.5, 0.3}, {9, 1, 9}), 1u);
    EXPECT_EQ(PredictedCategory({0.6}, {0}), 0u);
}

TEST(PredictedCategory, IsTheOneWithTheLargerCount_WhenLaterOnesTie) {
    EXPECT_EQ(PredictedCategory({0.2, 0.5, 0.5}, {1, 7, 9}), 2u);
    EXPECT_EQ(PredictedCategory({0.2, 0.5, 0.5}, {1, 9, 7}), 1u);
}

TEST(PredictedCategory, IsTheEarlierOne_WhenLaterOnesTieWithEqualCounts) {
    EXPECT_EQ(PredictedCategory({0.2, 0.5, 0.5}, {1, 7, 7}), 1u);
}

TEST(PredictedCategory, IsTheFirst_WhenItTiesWithOnlyOne) {
    EXPECT_EQ(PredictedCategory({0.5, 0.5}, {1, 9}), 0u);
    EXPECT_EQ(PredictedCategory({0.5, 0.5, 0.2}, {1, 9, 9}), 0u);
    EXPECT_EQ(PredictedCategory({0.5, 0.2, 0.5}, {1, 9, 9}), 0u);
}

TEST(PredictedCategory, IsTheFirst_WhenThirdAndLaterTiedOnesHaveNoLargerCount) {
    EXPECT_EQ(PredictedCategory({0.4, 0.4, 0.4}, {100, 1, 2}), 0u);
}

TEST(PredictedCategory, NeverIsTheSecondTiedOne_WhenTheFirstTies) {
    EXPECT_EQ(PredictedCategory({0.4, 0.4, 0.4}, {1, 100, 2}), 2u);
    EXPECT_EQ(PredictedCategory({0.4, 0.1, 0.4, 0.4}, {1, 500, 100, 2}), 3u);
}

TEST(PredictedCategory, ComparesWithTheTruncatedCount) {
    // 7.5 is greater than 7.9 cut to 7, and so is 7.2 greater than 7.5 cut to 7.
    EXPECT_EQ(PredictedCategory({0.1, 0.3, 0.3, 0.3}, {0, 7.9, 7.5, 7.2}), 3u);
    EXPECT_EQ(PredictedCategory({0.1, 0.3, 0.3}, {0, 7.9, 7.0}), 1u);
}

TEST(PredictedCategory, HoldsCountsAtTheLimitOfWholeNumbers) {
    EXPECT_EQ(PredictedCategory({0.1, 0.3, 0.3}, {0, 1e300, 2147483647.0}), 1u);
    EXPECT_EQ(PredictedCategory({0.1, 0.3, 0.3}, {0, 1e300, 2147483648.0}), 2u);
    EXPECT_EQ(PredictedCategory({0.1, 0.3, 0.3}, {0, -1e300, -1e299}), 1u);
}

TEST(PredictedCategory, ForgetsEarlierTies_WhenAHigherProbabilityComes) {
    EXPECT_EQ(PredictedCategory({0.1, 0.2, 0.2, 0.5}, {9, 1, 9, 1}), 3u);
}

TEST(PredictedCategory, IsTheFirst_WhenItsProbabilityIsNaN) {
    EXPECT_EQ(PredictedCategory({nan, 0.2, 0.9}, {1, 2, 3}), 0u);
    EXPECT_EQ(PredictedCategory({nan, nan, nan}, {1, 2, 3}), 0u);
}

TEST(PredictedCategory, NeverIsOneWithNaN_WhenTheFirstHasANumber) {
    EXPECT_EQ(PredictedCategory({0.1, nan, 0.2}, {1, 2, 3}), 2u);
    EXPECT_EQ(PredictedCategory({0.1, nan, 0.1}, {1, 2, 3}), 0u);
}

TEST(PredictedCategory, TakesNegativeAndPositiveZeroForEqual) {
    EXPECT_EQ(PredictedCategory({-1, 0.0, -0.0}, {1, 2, 3}), 2u);
}

TEST(PredictedCategoryDeathTest, StopsTheProcess_WhenThereAreNoProbabilities) {
    EXPECT_DEATH(PredictedCategory({}, {}), "");
}

TEST(PredictedCategoryDeathTest, StopsTheProcess_WhenCountsAreMissingForATie) {
    EXPECT_DEATH(PredictedCategory({0.4, 0.4, 0.4}, {}), "");
}

RC_GTEST_PROP(PredictedCategory, AgreesWithTheRuleWrittenOut, ()) {
    const auto categories = static_cast<std::size_t>(*rc::gen::inRange(1, 9));
    // Few different numbers, so that ties are the rule and not the exception.
    const auto probabilities = *rc::gen::container<Numbers>(categories, rc::gen::element(0.1, 0.3, 0.3, nan, -0.0));
    const auto counts =
        *rc::gen::container<Numbers>(categories, rc::gen::element(0.0, 1.0, 1.5, 1.9, 2.0, 7.0, 1e12, -3.5, nan));
    RC_ASSERT(static_cast<int>(PredictedCategory(probabilities, counts)) ==
              nbscore::test::PredictByTieRule(probabilities, counts));
}

}  // namespace

#include "naivebayes/Probabilities.h"

#include <gtest/gtest.h>

#include <limits>

#include "framework/NumericValue.h"

namespace {

using nbscore::JointProbability;
using nbscore::SmoothedPriors;
using Tables = std::vector<std::unique_ptr<NBayesInputBase>>;

const double missing = NumericValue::GetSysmisValue();

/// With a threshold of zero the probabilities are the plain shares: 1/4, 3/4 and 3/4, 1/4.
Tables OneTable() {
    Tables tables;
    tables.push_back(std::make_unique<NBayesInputBase>());
    tables.back()->SetCounts(0, {{1, 3}, {3, 1}});
    return tables;
}

TEST(SmoothedPriors, DivideByTheThresholdsOwnTermNotByTheTotal) {
    EXPECT_EQ(SmoothedPriors({3, 1}, 0.001),
              (std::vector<double>{(0.001 + 3) / (0.002 + 1000), (0.001 + 1) / (0.002 + 1000)}));
    EXPECT_NEAR(SmoothedPriors({3, 1}, 0.001)[0], 0.0030010, 1e-7);
}

TEST(SmoothedPriors, AreNone_WhenThereAreNoCounts) {
    EXPECT_TRUE(SmoothedPriors({}, 0.001).empty());
}

TEST(SmoothedPriors, AreZero_WhenTheThresholdIsZero) {
    EXPECT_EQ(SmoothedPriors({3, 1}, 0), (std::vector<double>{0, 0}));
}

TEST(JointProbability, IsThePrior_WhenNoPredictorHasACode) {
    EXPECT_EQ(JointProbability(0.3, OneTable(), {missing}, 0), 0.3);
    EXPECT_EQ(JointProbability(0.3, OneTable(), {-1}, 1), 0.3);
    EXPECT_EQ(JointProbability(0.3, {}, {}, 7), 0.3);
}

TEST(JointProbability, MultipliesTheConditionalProbability) {
    EXPECT_EQ(JointProbability(0.3, OneTable(), {0}, 0), 0.3 * 0.25);
    EXPECT_EQ(JointProbability(0.3, OneTable(), {0}, 1), 0.3 * 0.75);
    EXPECT_EQ(JointProbability(0.3, OneTable(), {1}, 0), 0.3 * 0.75);
}

TEST(JointProbability, RoundsACodeToTheNearestCategory) {
    EXPECT_EQ(JointProbability(1, OneTable(), {0.4}, 0), 0.25);
    EXPECT_EQ(JointProbability(1, OneTable(), {-0.4}, 0), 0.25);
    EXPECT_EQ(JointProbability(1, OneTable(), {0.5}, 0), 0.75);
    EXPECT_EQ(JointProbability(1, OneTable(), {1.4}, 0), 0.75);
}

TEST(JointProbability, LeavesOutWhatIsNotAboveMinusOneHalf) {
    EXPECT_EQ(JointProbability(1, OneTable(), {-0.5}, 0), 1);
    EXPECT_EQ(JointProbability(1, OneTable(), {-1e300}, 0), 1);
    EXPECT_EQ(JointProbability(1, OneTable(), {std::numeric_limits<double>::quiet_NaN()}, 0), 1);
}

TEST(JointProbability, MultipliesFromTheLeft) {
    Tables tables;
    for (const double count : {1.0, 2.0, 4.0}) {
        tables.push_back(std::make_unique<NBayesInputBase>());
        tables.back()->SetCounts(0.1, {{count}, {3}});
    }
    const auto probability = [&](std::size_t j) { return tables[j]->GetProbabilities()[0][0]; };
    EXPECT_EQ(JointProbability(0.7, tables, {0, 0, 0}, 0), ((0.7 * probability(0)) * probability(1)) * probability(2));
    EXPECT_EQ(JointProbability(0.7, tables, {0, missing, 0}, 0), (0.7 * probability(0)) * probability(2));
}

TEST(JointProbabilityDeathTest, StopsTheProcess_WhenAnIndexIsOutOfRange) {
    EXPECT_DEATH(JointProbability(1, OneTable(), {2}, 0), "");
    EXPECT_DEATH(JointProbability(1, OneTable(), {0}, 2), "");
    EXPECT_DEATH(JointProbability(1, OneTable(), {0}, -1), "");
    EXPECT_DEATH(JointProbability(1, OneTable(), {1e300}, 0), "");
    EXPECT_DEATH(JointProbability(1, OneTable(), {}, 0), "");
}

}  // namespace

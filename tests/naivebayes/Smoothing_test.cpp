#include "naivebayes/Smoothing.h"

#include <gtest/gtest.h>

namespace {

using nbscore::SmoothPriors;

TEST(SmoothedPriors, DivideByTheThresholdsOwnTermNotByTheTotal) {
    EXPECT_EQ(SmoothPriors({3, 1}, 0.001),
              (std::vector<double>{(0.001 + 3) / (0.002 + 1000), (0.001 + 1) / (0.002 + 1000)}));
    EXPECT_NEAR(SmoothPriors({3, 1}, 0.001)[0], 0.0030010, 1e-7);
}

TEST(SmoothedPriors, AreNone_WhenThereAreNoCounts) {
    EXPECT_TRUE(SmoothPriors({}, 0.001).empty());
}

TEST(SmoothedPriors, AreZero_WhenTheThresholdIsZero) {
    EXPECT_EQ(SmoothPriors({3, 1}, 0), (std::vector<double>{0, 0}));
}

}  // namespace

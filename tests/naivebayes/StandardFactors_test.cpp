#include "naivebayes/StandardFactors.h"

#include <gtest/gtest.h>

#include <limits>

namespace nbscore {
namespace {

using Matrix = std::vector<std::vector<double>>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Matrix Conditionals(const Matrix& counts, double threshold) {
    Matrix probabilities = counts;
    StandardConditionals(counts, threshold, probabilities);
    return probabilities;
}

TEST(StandardPriors, AreSharesOfAllCounts) {
    EXPECT_EQ(StandardPriors({3, 1}), (std::vector<double>{0.75, 0.25}));
    // Summed in this order, the three tenths are a little more than 0.6.
    EXPECT_EQ(StandardPriors({0.1, 0.2, 0.3}),
              (std::vector<double>{0.1 / (0.0 + 0.1 + 0.2 + 0.3), 0.2 / (0.1 + 0.2 + 0.3), 0.3 / (0.1 + 0.2 + 0.3)}));
    EXPECT_EQ(StandardPriors({}), std::vector<double>());
}

TEST(StandardPriors, AreZero_WhereThereIsNoShare) {
    EXPECT_EQ(StandardPriors({0, 4}), (std::vector<double>{0, 1}));
    EXPECT_EQ(StandardPriors({0, 0}), (std::vector<double>{0, 0}));
    EXPECT_EQ(StandardPriors({nan, 1}), (std::vector<double>{0, 0}));
    EXPECT_EQ(StandardPriors({-1, 3}), (std::vector<double>{0, 1.5}));
}

TEST(StandardConditionals, AreSharesOfTheirColumns) {
    EXPECT_EQ(Conditionals({{1, 4}, {3, 4}}, 0.001), (Matrix{{0.25, 0.5}, {0.75, 0.5}}));
    EXPECT_EQ(Conditionals({{0.1}, {0.2}, {0.3}}, 0),
              (Matrix{{0.1 / (0.1 + 0.2 + 0.3)}, {0.2 / (0.1 + 0.2 + 0.3)}, {0.3 / (0.1 + 0.2 + 0.3)}}));
}

TEST(StandardConditionals, AreTheThreshold_WhereThereIsNoShare) {
    EXPECT_EQ(Conditionals({{0, 4}, {3, 0}}, 0.001), (Matrix{{0.001, 1}, {1, 0.001}}));
    EXPECT_EQ(Conditionals({{0, 4}, {3, 0}}, 0), (Matrix{{0, 1}, {1, 0}}));
    EXPECT_EQ(Conditionals({{0, 1}, {0, 1}}, 0.5), (Matrix{{0.5, 0.5}, {0.5, 0.5}}));
    EXPECT_EQ(Conditionals({{-1, nan}, {3, 1}}, 0.5), (Matrix{{0.5, 0.5}, {1.5, 0.5}}));
    EXPECT_EQ(Conditionals({{-1}, {-1}}, 0.5), (Matrix{{0.5}, {0.5}}));
}

TEST(StandardConditionals, AreNone_WhereNothingIsCounted) {
    EXPECT_EQ(Conditionals({}, 0.5), Matrix());
    EXPECT_EQ(Conditionals({{}, {}}, 0.5), (Matrix{{}, {}}));
}

}  // namespace
}  // namespace nbscore

#include "count/Binning.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Numbers with one count each for two categories.
CountedNumbers Counted(const std::vector<double>& numbers, const std::vector<std::vector<std::uint64_t>>& counts) {
    return {numbers, counts};
}

CountedNumbers EachOnce(std::size_t count) {
    CountedNumbers counted;
    for (std::size_t i = 1; i <= count; ++i) {
        counted.numbers.push_back(static_cast<double>(i));
        counted.counts.push_back({1, 0});
    }
    return counted;
}

TEST(CutIntoEqualCounts, HasBinsOfTheSameSize_WhenTheNumbersAllowIt) {
    EXPECT_THAT(CutIntoEqualCounts(EachOnce(12), 3), ElementsAre(4.0, 8.0));
    EXPECT_THAT(CutIntoEqualCounts(EachOnce(10), 4), ElementsAre(3.0, 5.0, 8.0));
}

TEST(CutIntoEqualCounts, CountsAllCategories) {
    EXPECT_THAT(CutIntoEqualCounts(Counted({1, 2, 3}, {{1, 7}, {5, 1}, {1, 1}}), 2), ElementsAre(1.0));
}

TEST(CutIntoEqualCounts, TakesTheNearerSide_WhenANumberIsFrequent) {
    EXPECT_THAT(CutIntoEqualCounts(Counted({1, 2, 3}, {{4, 0}, {90, 0}, {6, 0}}), 2), ElementsAre(2.0));
    EXPECT_THAT(CutIntoEqualCounts(Counted({1, 2, 3}, {{40, 0}, {50, 0}, {10, 0}}), 2), ElementsAre(1.0));
    EXPECT_THAT(CutIntoEqualCounts(Counted({1, 2, 3}, {{20, 0}, {50, 0}, {30, 0}}), 2), ElementsAre(2.0));
}

TEST(CutIntoEqualCounts, MakesFewerBins_WhenThereAreFewerNumbers) {
    EXPECT_THAT(CutIntoEqualCounts(EachOnce(3), 10), ElementsAre(1.0, 2.0));
    EXPECT_THAT(CutIntoEqualCounts(EachOnce(1), 10), IsEmpty());
}

TEST(CutIntoEqualCounts, CutsAtTheNumberOfFewestDigits_BetweenTwoNumbers) {
    const auto cutBetween = [](double below, double above) {
        return CutIntoEqualCounts(Counted({below, above}, {{1, 0}, {1, 0}}), 2);
    };
    EXPECT_THAT(cutBetween(29.0, 31.0), ElementsAre(30.0));
    EXPECT_THAT(cutBetween(29.0, 30.0), ElementsAre(29.0));
    EXPECT_THAT(cutBetween(-1.75, 0.3), ElementsAre(0.0));
    EXPECT_THAT(cutBetween(0.1234, 0.1239), ElementsAre(0.1234));
    EXPECT_THAT(cutBetween(1.0, std::nextafter(1.0, 2.0)), ElementsAre(1.0));
}

TEST(CutIntoEqualCounts, CutsRightBehindANumber_WhenItStandsForThoseBelow) {
    CountedNumbers counted = Counted({29.125, 31.0}, {{1, 0}, {1, 0}});
    counted.areExact = false;
    EXPECT_THAT(CutIntoEqualCounts(counted, 2), ElementsAre(29.125));
}

/// In bits, of the counts of two categories.
double Entropy(double first, double second) {
    double entropy = 0.0;
    for (const double count : {first, second}) {
        if (count > 0.0) entropy -= count / (first + second) * std::log2(count / (first + second));
    }
    return entropy;
}

TEST(CutByEntropy, CutsWhereCategoriesChange) {
    CountedNumbers counted;
    for (int i = 0; i < 60; ++i) {
        counted.numbers.push_back(i);
        const bool isMiddle = i >= 20 && i < 40;
        counted.counts.push_back({isMiddle ? 5U : 0U, isMiddle ? 0U : 5U});
    }
    EXPECT_THAT(CutByEntropy(counted), ElementsAre(19.0, 39.0));
}

TEST(CutByEntropy, LeavesNumbersTogether_WhenTheyTellNothing) {
    CountedNumbers counted;
    for (int i = 0; i < 50; ++i) {
        counted.numbers.push_back(i);
        counted.counts.push_back({3, 3});
    }
    EXPECT_THAT(CutByEntropy(counted), IsEmpty());
    EXPECT_THAT(CutByEntropy(EachOnce(1)), IsEmpty());
}

/// The bound of the rule, worked out for a single cut of two categories: a step weaker and there is none.
TEST(CutByEntropy, CutsOnlyWhenTheGainIsWorthTheDescription) {
    int cuts = 0;
    for (std::uint64_t strong = 10; strong <= 20; ++strong) {
        const auto n = static_cast<double>(strong);
        const double whole = Entropy(20.0, 20.0);
        const double gain = whole - 0.5 * Entropy(n, 20.0 - n) - 0.5 * Entropy(20.0 - n, n);
        const double kinds = strong == 20 ? 1.0 : 2.0;
        const double delta = std::log2(7.0) - (2.0 * whole - 2.0 * kinds * Entropy(n, 20.0 - n));
        const bool isWorthIt = gain > (std::log2(39.0) + delta) / 40.0;
        const CountedNumbers counted = Counted({1, 2}, {{strong, 20 - strong}, {20 - strong, strong}});
        EXPECT_THAT(CutByEntropy(counted), SizeIs(isWorthIt ? 1 : 0)) << strong;
        cuts += static_cast<int>(isWorthIt);
    }
    EXPECT_GT(cuts, 1);
    EXPECT_LT(cuts, 10);
}

}  // namespace
}  // namespace nbscore::test

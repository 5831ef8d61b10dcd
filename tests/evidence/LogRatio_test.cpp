// The logarithm of the ratio of two factors, wherever their exponents are.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "evidence/PairWeights.h"

namespace nbscore {
namespace {

TEST(LogRatio, IsNone_WhenANumberIsNotAboveZero) {
    const ScaledNumber one{1.0, 0.0};
    for (const double number : {0.0, -1.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(LogRatio({number, 0.0}, one), std::nullopt);
        EXPECT_EQ(LogRatio(one, {number, 0.0}), std::nullopt);
    }
}

TEST(LogRatio, IsThatOfTheQuotient_WhenItIsAPlainNumber) {
    EXPECT_EQ(LogRatio({0.3, 0.0}, {0.7, 0.0}), std::log(0.3 / 0.7));
    EXPECT_EQ(LogRatio({0.3, -5000.0}, {0.7, -5000.0}), std::log(0.3 / 0.7));
    EXPECT_EQ(LogRatio({0.3, 1.0}, {0.6, 0.0}), 0.0);
}

TEST(LogRatio, IsFinite_WhenTheQuotientIsBeyondDoubles) {
    EXPECT_NEAR(*LogRatio({1e300, 0.0}, {1e-300, 0.0}), 600.0 * std::numbers::ln10, 1e-12);
    EXPECT_NEAR(*LogRatio({1e-300, 0.0}, {1e300, 0.0}), -600.0 * std::numbers::ln10, 1e-12);
    EXPECT_NEAR(*LogRatio({1.0, -9000.0}, {1.0, 10.0}), -9010.0 * std::numbers::ln2, 1e-11);
}

RC_GTEST_PROP(LogRatio, ChangesItsSign_WhenTheNumbersChangePlaces, ()) {
    const auto draw = [] {
        return ScaledNumber{static_cast<double>(*rc::gen::inRange(1, 1 << 30)),
                            static_cast<double>(*rc::gen::inRange(-4000, 4000))};
    };
    const ScaledNumber one = draw();
    const ScaledNumber other = draw();
    const double there = *LogRatio(one, other);
    const double back = *LogRatio(other, one);
    RC_ASSERT(std::abs(there + back) <= 4e-16 * std::max(1.0, std::abs(there)));
    const double expected =
        std::log(one.mantissa / other.mantissa) + (one.exponent - other.exponent) * std::numbers::ln2;
    RC_ASSERT(std::abs(there - expected) <= 1e-15 * std::max(1.0, std::abs(expected)) + 1e-14);
}

}  // namespace
}  // namespace nbscore

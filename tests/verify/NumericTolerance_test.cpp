#include "verify/VerifiedCell.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "framework/MCMV.h"
#include "verify/VerificationSuite.h"

namespace nbscore::test {
namespace {

constexpr NumericTolerance standard{VerificationField::defaultPrecision, VerificationField::defaultZeroThreshold};
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(NumericTolerance, AllowsUpToTheBounds_AndNotOneDigitMore) {
    for (const double expected : {0.5, -0.5, 1e300, 0.1}) {
        const double lower = expected * (1.0 - 1e-6);
        const double upper = expected * (1.0 + 1e-6);
        EXPECT_TRUE(standard.Allows(expected, expected));
        EXPECT_TRUE(standard.Allows(expected, lower));
        EXPECT_TRUE(standard.Allows(expected, upper));
        EXPECT_FALSE(standard.Allows(expected, std::nextafter(lower, lower - expected)));
        EXPECT_FALSE(standard.Allows(expected, std::nextafter(upper, upper + expected)));
        EXPECT_FALSE(standard.Allows(expected, -expected));
    }
}

TEST(NumericTolerance, LetsTheZeroThresholdDecide_AboutExpectedNumbersUpToIt) {
    for (const double expected : {0.0, 1e-17, -1e-16, 1e-16}) {
        EXPECT_TRUE(standard.TakesForZero(expected));
        EXPECT_TRUE(standard.Allows(expected, 0.0));
        EXPECT_TRUE(standard.Allows(expected, 1e-16));
        EXPECT_TRUE(standard.Allows(expected, -1e-16));
        EXPECT_FALSE(standard.Allows(expected, std::nextafter(1e-16, 1.0)));
        EXPECT_FALSE(standard.Allows(expected, std::nextafter(-1e-16, -1.0)));
    }
    const double above = std::nextafter(1e-16, 1.0);
    EXPECT_FALSE(standard.TakesForZero(above));
    EXPECT_FALSE(standard.Allows(above, 0.0));
    EXPECT_TRUE(standard.Allows(above, above));
}

TEST(NumericTolerance, AsksForTheNumberItself_WhenBothAreZero) {
    constexpr NumericTolerance none{0.0, 0.0};
    EXPECT_TRUE(none.Allows(0.1, 0.1));
    EXPECT_FALSE(none.Allows(0.1, std::nextafter(0.1, 1.0)));
    EXPECT_TRUE(none.Allows(0.0, -0.0));
    EXPECT_FALSE(none.Allows(0.0, std::numeric_limits<double>::denorm_min()));
}

TEST(NumericTolerance, NeverAllowsWhatIsNoFiniteNumber) {
    constexpr NumericTolerance wide{10.0, 1.0};
    for (const double broken : {std::nan(""), infinity, -infinity, MCMV::gMissingValue}) {
        EXPECT_FALSE(wide.Allows(1e308, broken));
        EXPECT_FALSE(wide.Allows(-1e308, broken));
        EXPECT_FALSE(wide.Allows(0.0, broken));
    }
    EXPECT_TRUE(wide.Allows(2.0, -18.0));
}

TEST(VerifiedCell, AgreesOnlyWithItsOwnKind) {
    const VerifiedCell one = VerifiedCell::OfNumber(1.0);
    EXPECT_EQ(one.text, "1");
    EXPECT_FALSE(Agree(VerifiedCell::OfText("1"), one, std::nullopt));
    EXPECT_FALSE(Agree(one, VerifiedCell::OfText("1"), standard));
    EXPECT_FALSE(Agree(one, VerifiedCell::OfNumber(MCMV::gMissingValue), standard));
    EXPECT_TRUE(Agree(VerifiedCell::OfText("a"), VerifiedCell::OfText("a"), std::nullopt));
    EXPECT_FALSE(Agree(VerifiedCell::OfText("a"), VerifiedCell::OfText("A"), std::nullopt));
    EXPECT_TRUE(Agree(one, VerifiedCell::OfNumber(1.0), std::nullopt));
    EXPECT_FALSE(Agree(one, VerifiedCell::OfNumber(1.0000000001), std::nullopt));
    EXPECT_TRUE(Agree(one, VerifiedCell::OfNumber(1.0000000001), standard));
}

}  // namespace
}  // namespace nbscore::test

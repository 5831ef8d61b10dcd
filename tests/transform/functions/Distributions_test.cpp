#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

TEST(Distributions, KnowTheNormalDistribution) {
    EXPECT_EQ(Call("stdNormalCDF", {0.0}), "0.5");
    EXPECT_NEAR(NumberFrom("stdNormalCDF", {1.96}), 0.9750021048517795, 1e-15);
    EXPECT_NEAR(NumberFrom("normalCDF", {12.0, 10.0, 2.0}), 0.8413447460685429, 1e-15);
    EXPECT_NEAR(NumberFrom("stdNormalPDF", {0.0}), 0.3989422804014327, 1e-15);
    EXPECT_NEAR(NumberFrom("normalPDF", {12.0, 10.0, 2.0}), 0.12098536225957168, 1e-15);
    EXPECT_NEAR(NumberFrom("stdNormalIDF", {0.975}), 1.959963984540054, 1e-14);
    EXPECT_NEAR(NumberFrom("normalIDF", {0.975, 10.0, 2.0}), 13.919927969080108, 1e-13);
    EXPECT_EQ(std::abs(NumberFrom("stdNormalIDF", {0.5})), 0.0);
    EXPECT_NEAR(NumberFrom("erf", {1.0}), 0.8427007929497149, 1e-15);
}

TEST(Distributions, KeepFarTailsExact) {
    EXPECT_NEAR(NumberFrom("stdNormalCDF", {-10.0}) / 7.61985302416052e-24, 1.0, 1e-12);
    EXPECT_NEAR(NumberFrom("stdNormalIDF", {7.61985302416052e-24}), -10.0, 1e-12);
    EXPECT_EQ(Call("stdNormalCDF", {40.0}), "1");
    EXPECT_EQ(Call("stdNormalPDF", {1e10}), "0");
    EXPECT_TRUE(std::isfinite(NumberFrom("stdNormalIDF", {5e-324})));
}

TEST(Distributions, TakeTheDeviationNotTheVariance) {
    EXPECT_EQ(Call("normalCDF", {3.0, 0.0, 3.0}), Call("stdNormalCDF", {1.0}));
}

TEST(Distributions, AreUndefined_WhenTheDeviationIsNotAboveZero) {
    for (const char* function : {"normalCDF", "normalPDF", "normalIDF"}) {
        EXPECT_EQ(Call(function, {0.5, 0.0, 0.0}), "nan") << function;
        EXPECT_EQ(Call(function, {0.5, 0.0, -1.0}), "nan") << function;
        EXPECT_EQ(Call(function, {0.5, 0.0, std::nan("")}), "nan") << function;
    }
}

TEST(Distributions, AreUndefined_WhenTheProbabilityIsNotBetweenZeroAndOne) {
    EXPECT_EQ(Call("stdNormalIDF", {0.0}), "-inf");
    EXPECT_EQ(Call("stdNormalIDF", {1.0}), "inf");
    EXPECT_EQ(Call("stdNormalIDF", {1.5}), "nan");
    EXPECT_EQ(Call("normalIDF", {-0.5, 0.0, 1.0}), "nan");
    EXPECT_EQ(Call("normalIDF", {std::nan(""), 0.0, 1.0}), "nan");
}

TEST(Distributions, AreMissing_WhenAnArgumentIsNoNumberOrMissing) {
    for (const char* function : {"stdNormalCDF", "stdNormalPDF", "stdNormalIDF", "erf"}) {
        EXPECT_EQ(Call(function, {"x"}), "missing") << function;
        EXPECT_EQ(Applied(function, missingArgument), "absent") << function;
    }
    EXPECT_EQ(Call("normalCDF", {1.0, "x", 1.0}), "missing");
    EXPECT_EQ(Applied("normalIDF", Number("0.5") + missingArgument + Number("1")), "absent");
}

RC_GTEST_PROP(Distributions, FindTheNumberAgain, ()) {
    const double x = *rc::gen::inRange(-5000, 5000) / 1000.0;
    RC_ASSERT(std::abs(NumberFrom("stdNormalIDF", {NumberFrom("stdNormalCDF", {x})}) - x) < 1e-8);
    RC_ASSERT(std::abs(NumberFrom("stdNormalCDF", {x}) + NumberFrom("stdNormalCDF", {-x}) - 1.0) < 1e-15);
}

}  // namespace
}  // namespace nbscore::test

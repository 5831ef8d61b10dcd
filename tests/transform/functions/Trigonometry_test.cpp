#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <numbers>
#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

constexpr double pi = std::numbers::pi;

TEST(Trigonometry, TakesAnglesInRadians) {
    EXPECT_EQ(Call("sin", {pi / 2}), "1");
    EXPECT_EQ(Call("cos", {0.0}), "1");
    EXPECT_DOUBLE_EQ(NumberFrom("cos", {pi}), -1.0);
    EXPECT_DOUBLE_EQ(NumberFrom("tan", {pi / 4}), 1.0);
    EXPECT_DOUBLE_EQ(NumberFrom("sin", {1.0}), 0.8414709848078965);
}

TEST(Trigonometry, FindsAngles) {
    EXPECT_DOUBLE_EQ(NumberFrom("asin", {1.0}), pi / 2);
    EXPECT_DOUBLE_EQ(NumberFrom("acos", {-1.0}), pi);
    EXPECT_DOUBLE_EQ(NumberFrom("atan", {-1.0}), -pi / 4);
}

TEST(Trigonometry, KnowsTheHyperbolicOnes) {
    EXPECT_DOUBLE_EQ(NumberFrom("sinh", {1.0}), 1.1752011936438014);
    EXPECT_DOUBLE_EQ(NumberFrom("cosh", {1.0}), 1.5430806348152437);
    EXPECT_DOUBLE_EQ(NumberFrom("tanh", {1.0}), 0.7615941559557649);
}

TEST(Trigonometry, GivesTheIeeeNumber_WhenUndefined) {
    EXPECT_EQ(Call("asin", {1.1}), "nan");
    EXPECT_EQ(Call("acos", {-1.1}), "nan");
    EXPECT_EQ(Call("sinh", {-1000.0}), "-inf");
    EXPECT_EQ(Call("cosh", {1000.0}), "inf");
}

TEST(Trigonometry, IsMissing_WhenTheArgumentIsNoNumberOrMissing) {
    for (const char* function : {"sin", "asin", "sinh", "cos", "acos", "cosh", "tan", "atan", "tanh"}) {
        EXPECT_EQ(Call(function, {"x"}), "missing") << function;
        EXPECT_EQ(Applied(function, missingArgument), "absent") << function;
    }
}

RC_GTEST_PROP(Trigonometry, FindsTheAngleAgain, ()) {
    const double angle = *rc::gen::inRange(-1500, 1500) / 1000.0;
    const auto goesBack = [&](const char* there, const char* back) {
        return std::abs(NumberFrom(back, {NumberFrom(there, {angle})}) - angle) < 1e-12;
    };
    RC_ASSERT(goesBack("sin", "asin"));
    RC_ASSERT(goesBack("tan", "atan"));
    RC_ASSERT(std::abs(NumberFrom("acos", {NumberFrom("cos", {angle})}) - std::abs(angle)) < 1e-9);
}

}  // namespace
}  // namespace nbscore::test

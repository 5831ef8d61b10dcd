#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

TEST(Arithmetic, IsThatOfDoubles) {
    EXPECT_EQ(Call("+", {1.5, 2.0}), "3.5");
    EXPECT_EQ(Call("-", {1.5, 2.0}), "-0.5");
    EXPECT_EQ(Call("*", {1.5, 2.0}), "3");
    EXPECT_EQ(Call("/", {7.0, 2.0}), "3.5");
    EXPECT_EQ(Call("+", {0.1, 0.2}), "0.30000000000000004");
}

TEST(Arithmetic, Negates_WhenMinusHasOneArgument) {
    EXPECT_EQ(Call("-", {1.5}), "-1.5");
    EXPECT_EQ(Call("-", {"x"}), "missing");
}

TEST(Arithmetic, TakesTextsAndTruthValuesAsNumbers_WhenTheyReadAsOnes) {
    EXPECT_EQ(Call("+", {" 1.5 ", true}), "2.5");
    EXPECT_EQ(Call("*", {"3", false}), "0");
    EXPECT_EQ(Call("+", {"one", 1.0}), "missing");
    EXPECT_EQ(Call("+", {1.0, ""}), "missing");
    EXPECT_EQ(Call("/", {"inf", 1.0}), "missing");
}

TEST(Arithmetic, GivesTheIeeeNumber_WhenTheOperationIsUndefined) {
    EXPECT_EQ(Call("/", {1.0, 0.0}), "inf");
    EXPECT_EQ(Call("/", {-1.0, 0.0}), "-inf");
    EXPECT_EQ(Call("/", {0.0, 0.0}), "nan");
    EXPECT_EQ(Call("*", {1e308, 10.0}), "inf");
}

TEST(Arithmetic, IsMissingInADocument_WhenAnArgumentIs) {
    for (const char* function : {"+", "-", "*", "/"}) {
        EXPECT_EQ(Applied(function, Number("1") + missingArgument), "absent") << function;
        EXPECT_EQ(Applied(function, missingArgument + Number("1")), "absent") << function;
    }
}

RC_GTEST_PROP(Arithmetic, SubtractsWhatItNegates, (double x, double y)) {
    RC_ASSERT(Call("-", {x, y}) == Call("+", {x, Function("-").call(std::vector<ExpressionValue>{y})}));
}

TEST(GeneralMath, TakesLogarithmsAndPowers) {
    EXPECT_EQ(Call("log10", {1000.0}), "3");
    EXPECT_EQ(Call("ln", {1.0}), "0");
    EXPECT_DOUBLE_EQ(NumberFrom("ln", {10.0}), 2.302585092994046);
    EXPECT_EQ(Call("exp", {0.0}), "1");
    EXPECT_DOUBLE_EQ(NumberFrom("exp", {1.0}), 2.718281828459045);
    EXPECT_EQ(Call("sqrt", {2.25}), "1.5");
    EXPECT_EQ(Call("pow", {2.0, 10.0}), "1024");
    EXPECT_EQ(Call("pow", {2.0, -1.0}), "0.5");
    EXPECT_EQ(Call("pow", {0.0, 0.0}), "1");
    EXPECT_EQ(Call("hypot", {3.0, 4.0}), "5");
    EXPECT_DOUBLE_EQ(NumberFrom("hypot", {3e200, 4e200}), 5e200);
    EXPECT_EQ(Call("abs", {-2.5}), "2.5");
}

TEST(GeneralMath, KeepsSmallNumbersExact) {
    EXPECT_EQ(Call("expm1", {1e-20}), "1e-20");
    EXPECT_EQ(Call("ln1p", {1e-20}), "1e-20");
    EXPECT_DOUBLE_EQ(NumberFrom("expm1", {1.0}), 1.718281828459045);
    EXPECT_DOUBLE_EQ(NumberFrom("ln1p", {1.0}), 0.6931471805599453);
}

TEST(GeneralMath, GivesTheIeeeNumber_WhenUndefined) {
    EXPECT_EQ(Call("log10", {0.0}), "-inf");
    EXPECT_EQ(Call("log10", {-1.0}), "nan");
    EXPECT_EQ(Call("ln", {0.0}), "-inf");
    EXPECT_EQ(Call("ln", {-1.0}), "nan");
    EXPECT_EQ(Call("ln1p", {-1.0}), "-inf");
    EXPECT_EQ(Call("ln1p", {-2.0}), "nan");
    EXPECT_EQ(Call("sqrt", {-1.0}), "nan");
    EXPECT_EQ(Call("exp", {1000.0}), "inf");
    EXPECT_EQ(Call("expm1", {1000.0}), "inf");
    EXPECT_EQ(Call("pow", {0.0, -1.0}), "inf");
    EXPECT_EQ(Call("pow", {-8.0, 0.5}), "nan");
    EXPECT_EQ(Call("modulo", {1.0, 0.0}), "nan");
}

TEST(GeneralMath, ComparesWithAThreshold) {
    EXPECT_EQ(Call("threshold", {2.0, 1.0}), "1");
    EXPECT_EQ(Call("threshold", {1.0, 1.0}), "0");
    EXPECT_EQ(Call("threshold", {0.5, 1.0}), "0");
}

TEST(GeneralMath, RoundsDownAndUp) {
    EXPECT_EQ(Call("floor", {-1.5}), "-2");
    EXPECT_EQ(Call("floor", {1.5}), "1");
    EXPECT_EQ(Call("ceil", {-1.5}), "-1");
    EXPECT_EQ(Call("ceil", {1.5}), "2");
}

TEST(GeneralMath, RoundsHalvesUp) {
    EXPECT_EQ(Call("round", {2.5}), "3");
    EXPECT_EQ(Call("round", {-2.5}), "-2");
    EXPECT_EQ(Call("round", {-2.6}), "-3");
    EXPECT_EQ(Call("round", {2.4}), "2");
    EXPECT_EQ(Call("round", {-0.3}), "0");
}

TEST(GeneralMath, RoundsByItsFormula_WhereAddingAHalfRounds) {
    EXPECT_EQ(Call("round", {0.49999999999999994}), "1");
    EXPECT_EQ(Call("round", {4503599627370497.0}), "4503599627370498");
}

TEST(GeneralMath, RoundsHalvesToEven_WhenItIsRint) {
    EXPECT_EQ(Call("rint", {2.5}), "2");
    EXPECT_EQ(Call("rint", {3.5}), "4");
    EXPECT_EQ(Call("rint", {-2.5}), "-2");
    EXPECT_EQ(Call("rint", {2.6}), "3");
}

TEST(GeneralMath, HasRemaindersOfTheDivisorsSign) {
    EXPECT_EQ(Call("modulo", {7.0, 3.0}), "1");
    EXPECT_EQ(Call("modulo", {-7.0, 3.0}), "2");
    EXPECT_EQ(Call("modulo", {7.0, -3.0}), "-2");
    EXPECT_EQ(Call("modulo", {-7.0, -3.0}), "-1");
    EXPECT_EQ(Call("modulo", {-6.0, 3.0}), "0");
    EXPECT_EQ(Call("modulo", {5.5, 2.0}), "1.5");
    EXPECT_EQ(Call("modulo", {5.5, 0.1}), "0");
}

TEST(GeneralMath, IsMissing_WhenAnArgumentIsNoNumber) {
    for (const char* function :
         {"log10", "ln", "sqrt", "abs", "exp", "floor", "ceil", "round", "rint", "expm1", "ln1p"}) {
        EXPECT_EQ(Call(function, {"x"}), "missing") << function;
        EXPECT_EQ(Call(function, {"1"}), Call(function, {true})) << function;
    }
    for (const char* function : {"pow", "threshold", "modulo", "hypot"}) {
        EXPECT_EQ(Call(function, {"x", 1.0}), "missing") << function;
        EXPECT_EQ(Call(function, {1.0, "x"}), "missing") << function;
    }
}

TEST(GeneralMath, IsMissingInADocument_WhenAnArgumentIs) {
    EXPECT_EQ(Applied("ln", missingArgument), "absent");
    EXPECT_EQ(Applied("pow", Number("2") + missingArgument), "absent");
    EXPECT_EQ(Applied("threshold", missingArgument + Number("2")), "absent");
}

RC_GTEST_PROP(GeneralMath, HasAModuloBetweenZeroAndItsDivisor, (int x, int y)) {
    RC_PRE(y != 0);
    const double remainder = NumberFrom("modulo", {static_cast<double>(x), static_cast<double>(y)});
    RC_ASSERT(remainder == 0.0 || (remainder < 0.0) == (y < 0));
    RC_ASSERT(std::abs(remainder) < std::abs(static_cast<double>(y)));
    RC_ASSERT(std::fmod(x - remainder, y) == 0.0);
}

RC_GTEST_PROP(GeneralMath, RoundsToTheNearest, (double x)) {
    const double rounded = NumberFrom("round", {x});
    RC_ASSERT(rounded == std::floor(rounded));
    RC_ASSERT(std::abs(rounded - x) <= std::max(0.5 + 1e-9, std::abs(x) * 1e-15));
}

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

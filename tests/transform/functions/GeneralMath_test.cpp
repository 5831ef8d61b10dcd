#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

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

TEST(GeneralMath, RoundsByItsFormula_WhereAddingAHalfRoundsByItself) {
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

}  // namespace
}  // namespace nbscore::test

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

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

}  // namespace
}  // namespace nbscore::test

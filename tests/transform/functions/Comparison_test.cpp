#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

/// The relations that hold, each by its sign.
std::string Relations(const ExpressionValue& x, const ExpressionValue& y) {
    std::string relations;
    const std::vector<std::pair<const char*, const char*>> all = {{"equal", "= "},       {"notEqual", "!= "},
                                                                  {"lessThan", "< "},    {"lessOrEqual", "<= "},
                                                                  {"greaterThan", "> "}, {"greaterOrEqual", ">= "}};
    for (const auto& [function, sign] : all) {
        if (Call(function, {x, y}) == "true") relations += sign;
    }
    return relations;
}

const std::string less = "!= < <= ";
const std::string same = "= <= >= ";
const std::string greater = "!= > >= ";
const std::string unordered = "!= ";

TEST(Comparison, IsOfNumbers_WhenBothAreNumbers) {
    EXPECT_EQ(Relations(9.0, 10.0), less);
    EXPECT_EQ(Relations(10.0, 10.0), same);
    EXPECT_EQ(Relations(0.0, -0.0), same);
    EXPECT_EQ(Relations(10.0, 9.0), greater);
}

TEST(Comparison, IsByteByByte_WhenBothAreTexts) {
    EXPECT_EQ(Relations("10", "9"), less);
    EXPECT_EQ(Relations("1", "1.0"), less);
    EXPECT_EQ(Relations("abc", "abc"), same);
    EXPECT_EQ(Relations("abc", "ab"), greater);
    EXPECT_EQ(Relations("a", "B"), greater);
    EXPECT_EQ(Relations("z", "ä"), less);
}

TEST(Comparison, IsOfNumbers_WhenOneIsANumberAndTheOtherReadsAsOne) {
    EXPECT_EQ(Relations(10.0, "9"), greater);
    EXPECT_EQ(Relations("1.0", 1.0), same);
    EXPECT_EQ(Relations(" 1 ", 1.0), same);
}

TEST(Comparison, IsOfTexts_WhenTheOtherReadsAsNoNumber) {
    EXPECT_EQ(Relations(10.0, "9 lives"), less);
    EXPECT_EQ(Relations("x", 1.0), greater);
    EXPECT_EQ(Relations("", 0.0), less);
}

TEST(Comparison, IsOfTruthValues_WhenOneIsATruthValueAndTheOtherReadsAsOne) {
    EXPECT_EQ(Relations(false, true), less);
    EXPECT_EQ(Relations(true, "1"), same);
    EXPECT_EQ(Relations("true", true), same);
    EXPECT_EQ(Relations(false, 0.0), same);
    EXPECT_EQ(Relations(true, "yes"), less);
    EXPECT_EQ(Relations(true, 2.0), greater);
}

TEST(Comparison, FindsNanUnequalAndUnordered) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Relations(nan, 1.0), unordered);
    EXPECT_EQ(Relations(nan, nan), unordered);
}

TEST(Comparison, IsMissing_WhenAnArgumentIs) {
    for (const char* function : {"equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"}) {
        EXPECT_EQ(Applied(function, missingArgument + Number("1")), "absent") << function;
        EXPECT_EQ(Applied(function, Number("1") + missingArgument), "absent") << function;
        EXPECT_EQ(Applied(function, missingArgument + missingArgument, "defaultValue='none'"), "text none") << function;
    }
}

TEST(Comparison, GivesTheFieldItsStorage) {
    EXPECT_EQ(Applied("equal", Number("1") + Text("1")), "text true");
    EXPECT_EQ(Applied("equal", Number("1") + Text("1"), "", "double"), "number 1");
    EXPECT_EQ(Applied("lessThan", Number("2") + Number("1"), "", "integer"), "number 0");
}

RC_GTEST_PROP(Comparison, IsTheOther_WhenTheArgumentsChangePlaces, (std::string x, std::string y)) {
    RC_ASSERT(Call("lessThan", {x, y}) == Call("greaterThan", {y, x}));
    RC_ASSERT(Call("lessOrEqual", {x, y}) == Call("greaterOrEqual", {y, x}));
    RC_ASSERT(Call("equal", {x, y}) == Call("equal", {y, x}));
}

}  // namespace
}  // namespace nbscore::test

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
const std::vector<std::string> all = {"min", "max", "sum", "avg", "median", "product"};

TEST(Aggregates, TakeAnyNumberOfNumbers) {
    const std::vector<ExpressionValue> numbers = {4.0, 1.0, 8.0, 2.0, 5.0};
    EXPECT_EQ(Call("min", numbers), "1");
    EXPECT_EQ(Call("max", numbers), "8");
    EXPECT_EQ(Call("sum", numbers), "20");
    EXPECT_EQ(Call("avg", numbers), "4");
    EXPECT_EQ(Call("median", numbers), "4");
    EXPECT_EQ(Call("product", numbers), "320");
    for (const std::string& function : all)
        EXPECT_EQ(Call(function, {7.5}), "7.5") << function;
}

TEST(Aggregates, TakeTheMeanOfTheMiddleTwo_WhenTheMedianIsOfAnEvenCount) {
    EXPECT_EQ(Call("median", {10.0, 1.0, 4.0, 2.0}), "3");
    EXPECT_EQ(Call("median", {1e308, 1.5e308}), "1.25e+308");
}

TEST(Aggregates, SumFromLeftToRight) {
    EXPECT_EQ(Call("sum", {1e16, 1.0, -1e16}), "0");
    EXPECT_EQ(Call("sum", {1e16, -1e16, 1.0}), "1");
    EXPECT_EQ(Call("avg", {1e308, 1e308}), "inf");
}

TEST(Aggregates, AreMissing_WhenAnArgumentIsNoNumber) {
    for (const std::string& function : all) {
        EXPECT_EQ(Call(function, {1.0, "one"}), "missing") << function;
        EXPECT_EQ(Call(function, {"2", true}), Call(function, {2.0, 1.0})) << function;
    }
}

TEST(Aggregates, AreNan_WhereverTheNanStands) {
    for (const std::string& function : all) {
        EXPECT_EQ(Call(function, {nan, 1.0, 2.0}), "nan") << function;
        EXPECT_EQ(Call(function, {1.0, 2.0, nan}), "nan") << function;
    }
}

TEST(Aggregates, LeaveMissingArgumentsOut) {
    const std::string numbers = missingArgument + Number("6") + missingArgument + Number("2") + missingArgument;
    EXPECT_EQ(Applied("min", numbers), "text 2");
    EXPECT_EQ(Applied("max", numbers), "text 6");
    EXPECT_EQ(Applied("sum", numbers), "text 8");
    EXPECT_EQ(Applied("avg", numbers), "text 4");
    EXPECT_EQ(Applied("median", numbers), "text 4");
    EXPECT_EQ(Applied("product", numbers), "text 12");
}

TEST(Aggregates, AreMissing_WhenAllArgumentsAre) {
    for (const std::string& function : all) {
        EXPECT_EQ(Applied(function, missingArgument + missingArgument), "absent") << function;
        EXPECT_EQ(Applied(function, missingArgument, "defaultValue='3'"), "text 3") << function;
    }
}

TEST(Aggregates, GiveMapMissingTo_WhenOneArgumentIsMissing) {
    EXPECT_EQ(Applied("sum", Number("1") + missingArgument, "mapMissingTo='-1'"), "text -1");
}

RC_GTEST_PROP(Aggregates, FindTheMedianThatSortingFinds, ()) {
    const auto numbers = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(-1000, 1000)));
    std::vector<ExpressionValue> arguments;
    for (const int number : numbers)
        arguments.emplace_back(static_cast<double>(number));
    auto sorted = numbers;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t half = sorted.size() / 2;
    const double median = sorted.size() % 2 == 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2.0;
    RC_ASSERT(NumberFrom("median", arguments) == median);
    RC_ASSERT(NumberFrom("min", arguments) == sorted.front());
    RC_ASSERT(NumberFrom("max", arguments) == sorted.back());
}

}  // namespace
}  // namespace nbscore::test

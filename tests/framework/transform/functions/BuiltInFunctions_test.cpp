#include "framework/transform/BuiltInFunctions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore::test {
namespace {

TEST(BuiltInFunctions, AreAllThatTheStandardHas) {
    std::vector<std::string_view> names;
    for (const BuiltInFunction& function : GetBuiltInFunctions())
        names.push_back(function.name);
    EXPECT_THAT(
        names, testing::UnorderedElementsAre(
                   "+", "-", "*", "/", "min", "max", "sum", "avg", "median", "product", "log10", "ln", "sqrt", "abs",
                   "exp", "pow", "threshold", "floor", "ceil", "round", "rint", "modulo", "expm1", "ln1p", "hypot",
                   "sin", "asin", "sinh", "cos", "acos", "cosh", "tan", "atan", "tanh", "isMissing", "isNotMissing",
                   "isValid", "isNotValid", "equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan",
                   "greaterOrEqual", "and", "or", "not", "isIn", "isNotIn", "if", "uppercase", "lowercase", "substring",
                   "trimBlanks", "concat", "replace", "matches", "stringLength", "formatNumber", "formatDatetime",
                   "dateDaysSinceYear", "dateSecondsSinceYear", "dateSecondsSinceMidnight", "normalCDF", "normalPDF",
                   "normalIDF", "stdNormalCDF", "stdNormalPDF", "stdNormalIDF", "erf"));
    EXPECT_EQ(names.size(), 70U);
}

TEST(BuiltInFunctions, NameTheirArgumentsAsManyAsTheyTake) {
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        std::string parameters(function.parameters);
        const bool goesOn = parameters.ends_with(", ...");
        if (goesOn) parameters.resize(parameters.size() - std::string_view(", ...").size());
        const auto named = static_cast<std::size_t>(std::ranges::count(parameters, ',')) + 1;
        const auto optional = static_cast<std::size_t>(std::ranges::count(parameters, '['));
        EXPECT_EQ(function.fewestArguments, named - optional) << function.name;
        EXPECT_EQ(function.mostArguments, goesOn ? BuiltInFunction::anyNumber : named) << function.name;
    }
}

TEST(BuiltInFunctions, CanAllBeCalledAndAreDescribedInASentence) {
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        EXPECT_TRUE(function.call != nullptr || function.make != nullptr) << function.name;
        EXPECT_TRUE(function.description.ends_with('.')) << function.name;
        EXPECT_FALSE(function.family.empty()) << function.name;
    }
}

TEST(BuiltInFunctions, StandTogetherInTheirFamilies) {
    std::set<std::string_view> finished;
    std::string_view current;
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (function.family != current) {
            EXPECT_TRUE(finished.insert(function.family).second) << function.family;
        }
        current = function.family;
    }
}

}  // namespace
}  // namespace nbscore::test

#include "transform/functions/BuiltInFunctions.h"

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

TEST(BuiltInFunctions, NameAsManyArgumentsAsTheyTake) {
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

ValueKind KindOf(const ExpressionValue& value) {
    if (std::holds_alternative<double>(value)) return ValueKind::Number;
    return std::holds_alternative<bool>(value) ? ValueKind::Truth : ValueKind::Text;
}

TEST(BuiltInFunctions, GiveValuesOfTheirKind) {
    // Each function has a result for one of these at least.
    const std::vector<std::vector<ExpressionValue>> samples = {
        {0.25, 0.5, 2.0},       {true, false, true},  {"a", "b", "c"}, {"abc", 1.0, 1.0},
        {"2024-02-29", 2000.0}, {"2024-02-29", "%Y"}, {5.0, "%d"}};
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (function.call == nullptr) continue;
        bool hasResult = false;
        for (const auto& sample : samples) {
            if (sample.size() < function.fewestArguments) continue;
            const std::size_t count = std::min(sample.size(), function.mostArguments);
            const ExpressionValue result = function.call(Arguments(sample).first(count));
            if (IsMissing(result)) continue;
            hasResult = true;
            EXPECT_EQ(KindOf(result), function.resultKind) << function.name;
        }
        EXPECT_TRUE(hasResult) << function.name;
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

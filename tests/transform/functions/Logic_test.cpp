#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

/// Every way to fill in what is not known: the result is known when all of them agree.
std::string ByFillingIn(bool isAnd, std::vector<ExpressionValue> arguments, std::size_t from = 0) {
    for (std::size_t i = from; i < arguments.size(); ++i) {
        if (!IsMissing(arguments[i])) continue;
        arguments[i] = true;
        const std::string whenTrue = ByFillingIn(isAnd, arguments, i + 1);
        arguments[i] = false;
        return ByFillingIn(isAnd, arguments, i + 1) == whenTrue ? whenTrue : "missing";
    }
    bool result = isAnd;
    for (const ExpressionValue& argument : arguments)
        result = isAnd ? result && std::get<bool>(argument) : result || std::get<bool>(argument);
    return result ? "true" : "false";
}

TEST(Logic, IsKnown_WhenNothingUnknownCouldChangeIt) {
    const std::vector<ExpressionValue> values = {true, false, missing};
    for (const auto& x : values) {
        for (const auto& y : values) {
            for (const auto& z : values) {
                EXPECT_EQ(Call("and", {x, y, z}), ByFillingIn(true, {x, y, z})) << Shown(x) << Shown(y) << Shown(z);
                EXPECT_EQ(Call("or", {x, y, z}), ByFillingIn(false, {x, y, z})) << Shown(x) << Shown(y) << Shown(z);
            }
            EXPECT_EQ(Call("and", {x, y}), ByFillingIn(true, {x, y}));
            EXPECT_EQ(Call("or", {x, y}), ByFillingIn(false, {x, y}));
        }
    }
}

TEST(Logic, Negates) {
    EXPECT_EQ(Call("not", {true}), "false");
    EXPECT_EQ(Call("not", {false}), "true");
}

TEST(Logic, TakesWhatReadsAsATruthValue) {
    EXPECT_EQ(Call("and", {"true", 1.0}), "true");
    EXPECT_EQ(Call("or", {"false", "0"}), "false");
    EXPECT_EQ(Call("not", {"1"}), "false");
    EXPECT_EQ(Call("not", {0.0}), "true");
}

TEST(Logic, DoesNotKnow_WhenAnArgumentIsNoTruthValue) {
    EXPECT_EQ(Call("not", {"yes"}), "missing");
    EXPECT_EQ(Call("not", {2.0}), "missing");
    EXPECT_EQ(Call("not", {"TRUE"}), "missing");
    EXPECT_EQ(Call("and", {true, "yes"}), "missing");
    EXPECT_EQ(Call("and", {false, "yes"}), "false");
    EXPECT_EQ(Call("or", {2.0, true}), "true");
    EXPECT_EQ(Call("or", {2.0, false}), "missing");
}

TEST(Logic, SeesMissingArgumentsInADocument) {
    EXPECT_EQ(Applied("and", missingArgument + Truth(false)), "text false");
    EXPECT_EQ(Applied("and", missingArgument + Truth(true)), "absent");
    EXPECT_EQ(Applied("or", missingArgument + Truth(true)), "text true");
    EXPECT_EQ(Applied("or", missingArgument + Truth(false)), "absent");
    EXPECT_EQ(Applied("not", missingArgument), "absent");
    EXPECT_EQ(Applied("and", missingArgument + Truth(false), "mapMissingTo='m'"), "text m");
}

}  // namespace
}  // namespace nbscore::test

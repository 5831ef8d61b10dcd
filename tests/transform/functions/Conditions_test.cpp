#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "transform/functions/FunctionProbe.h"

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

TEST(Membership, IsEqualityWithOneOfTheOthers) {
    EXPECT_EQ(Call("isIn", {"b", "a", "b"}), "true");
    EXPECT_EQ(Call("isIn", {"c", "a", "b"}), "false");
    EXPECT_EQ(Call("isIn", {1.0, "1.0", "2"}), "true");
    EXPECT_EQ(Call("isIn", {"1", "1.0"}), "false");
    EXPECT_EQ(Call("isNotIn", {"b", "a", "b"}), "false");
    EXPECT_EQ(Call("isNotIn", {"c", "a", "b"}), "true");
    EXPECT_EQ(Call("isIn", {true, "no", "true"}), "true");
}

TEST(Membership, IsMissing_WhenAnyArgumentIs) {
    for (const char* function : {"isIn", "isNotIn"}) {
        EXPECT_EQ(Applied(function, missingArgument + Text("a") + missingArgument), "absent") << function;
        EXPECT_EQ(Applied(function, Text("a") + Text("a") + missingArgument), "absent") << function;
    }
}

/// The result over all ways to fill in unknown arguments: known when all of them agree.
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

TEST(Logic, IsUnknown_WhenAnArgumentIsNoTruthValue) {
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

TEST(MissingValues, AreTold) {
    EXPECT_EQ(Call("isMissing", {missing}), "true");
    EXPECT_EQ(Call("isMissing", {""}), "false");
    EXPECT_EQ(Call("isNotMissing", {missing}), "false");
    EXPECT_EQ(Call("isNotMissing", {0.0}), "true");
}

TEST(MissingValues, AreToldInADocument) {
    EXPECT_EQ(Applied("isMissing", missingArgument), "text true");
    EXPECT_EQ(Applied("isNotMissing", missingArgument), "text false");
    EXPECT_EQ(Applied("isMissing", "<FieldRef field='x'/>"), "text false");
    EXPECT_EQ(Applied("isMissing", Apply("ln", Number("-1"))), "text true");
}

TEST(MissingValues, GiveMapMissingTo_WhenTheArgumentIsMissing) {
    for (const char* function : {"isMissing", "isNotMissing", "isValid", "isNotValid"})
        EXPECT_EQ(Applied(function, missingArgument, "mapMissingTo='m'"), "text m") << function;
    EXPECT_EQ(Applied("isMissing", Text("a"), "mapMissingTo='m'"), "text false");
}

TEST(Validity, IsToHaveAValue_WhenTheArgumentIsNoField) {
    EXPECT_EQ(Applied("isValid", Text("a")), "text true");
    EXPECT_EQ(Applied("isNotValid", Text("a")), "text false");
    EXPECT_EQ(Applied("isValid", missingArgument), "text false");
    EXPECT_EQ(Applied("isNotValid", missingArgument), "text true");
    EXPECT_EQ(Applied("isValid", "<FieldRef field='x'/>"), "text true");
}

/// To evaluate it twice at each level would never end.
TEST(Validity, EvaluatesItsArgumentOnce_HoweverDeepItNests) {
    std::string nested = "<FieldRef field='x'/>";
    for (int level = 0; level < 200; ++level)
        nested = "<Apply function='isValid' mapMissingTo='m'>" + nested + "</Apply>";
    EXPECT_EQ(Applied("isValid", nested, "mapMissingTo='m'"), "text true");
}

const std::string undefined = Apply("/", Number("1") + Number("0"));

TEST(Conditional, ChoosesByItsCondition) {
    EXPECT_EQ(Applied("if", Truth(true) + Text("a") + Text("b")), "text a");
    EXPECT_EQ(Applied("if", Truth(false) + Text("a") + Text("b")), "text b");
    EXPECT_EQ(Applied("if", Truth(true) + Text("a")), "text a");
}

TEST(Conditional, TakesWhatReadsAsATruthValue) {
    EXPECT_EQ(Applied("if", Text("true") + Text("a") + Text("b")), "text a");
    EXPECT_EQ(Applied("if", Number("0") + Text("a") + Text("b")), "text b");
}

TEST(Conditional, IsMissing_WhenItsConditionIsNoTruthValue) {
    EXPECT_EQ(Applied("if", Number("2") + Text("a") + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Text("yes") + Text("a") + Text("b"), "defaultValue='d' mapMissingTo='m'"), "text d");
}

TEST(Conditional, IsMissing_WhenItsConditionIsMissing) {
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b")), "absent");
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b"), "defaultValue='d'"), "text d");
    EXPECT_EQ(Applied("if", missingArgument + Text("a") + Text("b"), "mapMissingTo='m' defaultValue='d'"), "text m");
}

TEST(Conditional, IsMissing_WhenNothingIsChosen) {
    EXPECT_EQ(Applied("if", Truth(false) + Text("a")), "absent");
    EXPECT_EQ(Applied("if", Truth(false) + Text("a"), "mapMissingTo='m' defaultValue='d'"), "text d");
}

TEST(Conditional, IsMissing_WhenWhatItChoosesIs) {
    EXPECT_EQ(Applied("if", Truth(true) + missingArgument + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Truth(true) + missingArgument + Text("b"), "mapMissingTo='m'"), "text m");
}

TEST(Conditional, IgnoresWhatItDoesNotChoose) {
    EXPECT_EQ(Applied("if", Truth(true) + Text("a") + missingArgument, "mapMissingTo='m'"), "text a");
    EXPECT_EQ(Applied("if", Truth(false) + undefined + Text("b"), "mapMissingTo='m'"), "text b");
}

TEST(Conditional, IsMissing_WhenItChoosesANumberThatIsNotFinite) {
    EXPECT_EQ(Applied("if", Truth(true) + infinity + Text("b")), "absent");
    EXPECT_EQ(Applied("if", Truth(true) + infinity + Text("b"), "invalidValueTreatment='asIs'"), "text inf");
}

}  // namespace
}  // namespace nbscore::test

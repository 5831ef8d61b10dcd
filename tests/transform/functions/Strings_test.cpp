#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

constexpr std::size_t longest = 1'000'000;

TEST(Strings, ChangeCase) {
    EXPECT_EQ(Call("uppercase", {"Abc 1"}), "'ABC 1'");
    EXPECT_EQ(Call("lowercase", {"ABc 1"}), "'abc 1'");
    EXPECT_EQ(Call("uppercase", {"äöü éçñ"}), "'ÄÖÜ ÉÇÑ'");
    EXPECT_EQ(Call("lowercase", {"ΑΒΓ ДЖЯ"}), "'αβγ джя'");
    EXPECT_EQ(Call("uppercase", {true}), "'TRUE'");
    EXPECT_EQ(Call("uppercase", {1e-7}), "'1E-07'");
}

TEST(Strings, ChangeCaseCharacterByCharacter) {
    EXPECT_EQ(Call("uppercase", {"straße"}), "'STRAßE'");
    EXPECT_EQ(Call("uppercase", {"ﬁ"}), "'ﬁ'");
    EXPECT_EQ(Call("lowercase", {"ẞ"}), "'ß'");
    EXPECT_EQ(Call("lowercase", {"ΣΑΣ"}), "'σασ'");
    EXPECT_EQ(Call("uppercase", {"ı"}), "'I'");
    EXPECT_EQ(Call("uppercase", {"𐐨"}), "'𐐀'");
}

TEST(Strings, KeepBytesThatAreNoCharacters) {
    EXPECT_EQ(Call("uppercase", {"a\xFFz\xC3"}), "'A\xFFZ\xC3'");
    EXPECT_EQ(Call("stringLength", {"a\xFF\xC3"}), "3");
    EXPECT_EQ(Call("substring", {"a\xFFz", 2.0, 1.0}), "'\xFF'");
}

TEST(Strings, AreCutByCharacters) {
    EXPECT_EQ(Call("substring", {"abcdef", 2.0, 3.0}), "'bcd'");
    EXPECT_EQ(Call("substring", {"aßc€d", 2.0, 3.0}), "'ßc€'");
    EXPECT_EQ(Call("substring", {"abc", 1.0, 0.0}), "''");
    EXPECT_EQ(Call("substring", {1234.0, 2.0, 2.0}), "'23'");
    EXPECT_EQ(Call("substring", {"abc", "2", true}), "'b'");
}

TEST(Strings, AreCutAtTheirEnd) {
    EXPECT_EQ(Call("substring", {"abc", 2.0, 9.0}), "'bc'");
    EXPECT_EQ(Call("substring", {"abc", 4.0, 1.0}), "''");
    EXPECT_EQ(Call("substring", {"abc", 1e300, 1e300}), "''");
    EXPECT_EQ(Call("substring", {"abc", 1.0, 1e300}), "'abc'");
}

TEST(Strings, AreNotCut_WhenStartOrLengthIsNone) {
    for (const double start : {0.0, -1.0, 1.5, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(Call("substring", {"abc", start, 1.0}), "missing") << start;
    for (const double length : {-1.0, 0.5, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(Call("substring", {"abc", 1.0, length}), "missing") << length;
    EXPECT_EQ(Call("substring", {"abc", "first", 1.0}), "missing");
}

TEST(Strings, AreTrimmed) {
    EXPECT_EQ(Call("trimBlanks", {" \t\r\n a b \n"}), "'a b'");
    EXPECT_EQ(Call("trimBlanks", {"  "}), "''");
    EXPECT_EQ(Call("trimBlanks", {""}), "''");
    EXPECT_EQ(Call("trimBlanks", {"\u00A0a"}), "'\u00A0a'");
}

TEST(Strings, AreJoined) {
    EXPECT_EQ(Call("concat", {"a", "", "b"}), "'ab'");
    EXPECT_EQ(Call("concat", {"n", 1.0, 0.5, true}), "'n10.5true'");
}

TEST(Strings, AreCounted) {
    EXPECT_EQ(Call("stringLength", {""}), "0");
    EXPECT_EQ(Call("stringLength", {"aß€😀"}), "4");
    EXPECT_EQ(Call("stringLength", {12.5}), "4");
}

TEST(Strings, AreNeverLongerThanTheLongest) {
    const std::string half(longest / 2, 'a');
    EXPECT_EQ(Call("concat", {half, half}).size(), longest + 2);
    EXPECT_EQ(Call("concat", {half, half, "a"}), "missing");
    EXPECT_EQ(Call("uppercase", {half + half + "a"}), "missing");
    EXPECT_EQ(Call("trimBlanks", {half + half + "a"}), "missing");
    EXPECT_EQ(Call("substring", {half + half + "a", 2.0, 1e9}).size(), longest + 2);
    // A character of two bytes whose capital has three.
    std::string growing;
    while (growing.size() < longest)
        growing += "ȿ";
    EXPECT_EQ(Call("uppercase", {growing}), "missing");
}

TEST(Strings, AreMissing_WhenAnArgumentIs) {
    for (const char* function : {"uppercase", "lowercase", "trimBlanks", "stringLength"})
        EXPECT_EQ(Applied(function, missingArgument), "absent") << function;
    EXPECT_EQ(Applied("concat", Text("a") + missingArgument + Text("b")), "absent");
    EXPECT_EQ(Applied("substring", missingArgument + Number("1") + Number("1")), "absent");
    EXPECT_EQ(Applied("substring", Text("a") + missingArgument + Number("1")), "absent");
    EXPECT_EQ(Applied("substring", Text("a") + Number("0") + Number("1"), "invalidValueTreatment='asIs'"), "absent");
}

RC_GTEST_PROP(Strings, ComeTogetherFromTheirParts, (std::string text)) {
    const double start = *rc::gen::inRange(1, 20);
    const auto left = Function("substring").call(std::vector<ExpressionValue>{text, 1.0, start - 1.0});
    const auto right = Function("substring").call(std::vector<ExpressionValue>{text, start, 1e9});
    RC_ASSERT(Call("concat", {left, right}) == "'" + text + "'");
    RC_ASSERT(NumberFrom("stringLength", {left}) + NumberFrom("stringLength", {right}) ==
              NumberFrom("stringLength", {text}));
}

}  // namespace
}  // namespace nbscore::test

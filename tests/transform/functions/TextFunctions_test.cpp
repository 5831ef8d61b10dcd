#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "transform/functions/FunctionProbe.h"

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

TEST(Strings, AreNotCut_WhenStartOrLengthIsInvalid) {
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

TEST(Matches, IsTrue_WhenThePatternMatchesAnywhere) {
    EXPECT_EQ(Call("matches", {"abcd", "bc"}), "true");
    EXPECT_EQ(Call("matches", {"abcd", "^bc"}), "false");
    EXPECT_EQ(Call("matches", {"abcd", "^a.*d$"}), "true");
    EXPECT_EQ(Call("matches", {"abcd", ""}), "true");
    EXPECT_EQ(Call("matches", {"ABCD", "bc"}), "false");
    EXPECT_EQ(Call("matches", {"ABCD", "(?i)bc"}), "true");
    EXPECT_EQ(Call("matches", {2024.0, "^\\d{4}$"}), "true");
}

TEST(Matches, TakesCharactersAsUnicode) {
    EXPECT_EQ(Call("matches", {"€", "^.$"}), "true");
    EXPECT_EQ(Call("matches", {"straße", "^\\pL+$"}), "true");
    EXPECT_EQ(Call("matches", {"\xFF", "^.$"}), "false");
    EXPECT_EQ(Call("matches", {"a\xFF", "a"}), "true");
}

TEST(Matches, IsMissing_WhenThePatternCannotBeUsed) {
    for (const char* pattern : {"(", "[a", "a**", "(?=a)", "(a)\\1", "a{1001}", "(?:a{1000}){1000}", "\xFF"})
        EXPECT_EQ(Call("matches", {"a", pattern}), "missing") << pattern;
    EXPECT_EQ(Call("matches", {"a", std::string(200'000, '(') + std::string(200'000, ')')}), "missing");
}

TEST(Matches, EndsSoon_WhenThePatternIsMadeToTakeForever) {
    const std::string text = std::string(50'000, 'a') + "!";
    EXPECT_EQ(Call("matches", {text, "^(a+)+$"}), "false");
    EXPECT_EQ(Call("matches", {text, "^(a|a)*$"}), "false");
    EXPECT_EQ(Call("matches", {text, "(.*a){20}!$"}), "true");
}

TEST(Replace, ReplacesEveryMatch) {
    EXPECT_EQ(Call("replace", {"BBBB", "B+", "c"}), "'c'");
    EXPECT_EQ(Call("replace", {"a-b-c", "-", ""}), "'abc'");
    EXPECT_EQ(Call("replace", {"a-b-c", "x", "y"}), "'a-b-c'");
    EXPECT_EQ(Call("replace", {"aaa", "a", "aa"}), "'aaaaaa'");
    EXPECT_EQ(Call("replace", {"", "^", "x"}), "'x'");
    EXPECT_EQ(Call("replace", {"über", "ü", "ue"}), "'ueber'");
    EXPECT_EQ(Call("replace", {"one two", "\\b", "|"}), "'|one| |two|'");
    EXPECT_EQ(Call("replace", {"aab", "^a", "x"}), "'xab'");
}

TEST(Replace, ReplacesEmptyMatchesBetweenCharacters) {
    EXPECT_EQ(Call("replace", {"abc", "", "-"}), "'-a-b-c-'");
    EXPECT_EQ(Call("replace", {"baac", "a*", "x"}), "'xbxcx'");
    EXPECT_EQ(Call("replace", {"ß€", "", "-"}), "'-ß-€-'");
    EXPECT_EQ(Call("replace", {"\xFF\xFF", "", "-"}), "'-\xFF-\xFF-'");
}

TEST(Replace, InsertsGroups) {
    EXPECT_EQ(Call("replace", {"Doe, John", "(\\w+), (\\w+)", "$2 $1"}), "'John Doe'");
    EXPECT_EQ(Call("replace", {"Doe, John", "(\\w+), (\\w+)", "\\2 \\1"}), "'John Doe'");
    EXPECT_EQ(Call("replace", {"ab", "[ab]", "<$0>"}), "'<a><b>'");
    EXPECT_EQ(Call("replace", {"ab", "[ab]", "\\0\\0"}), "'aabb'");
    EXPECT_EQ(Call("replace", {"ab", "(a)|(b)", "[$1|$2]"}), "'[a|][|b]'");
    EXPECT_EQ(Call("replace", {"a", "(a)", "$10"}), "'a0'");
}

TEST(Replace, LeavesOtherSignsUnchanged) {
    EXPECT_EQ(Call("replace", {"a", "a", "$"}), "'$'");
    EXPECT_EQ(Call("replace", {"a", "a", "$x"}), "'$x'");
    EXPECT_EQ(Call("replace", {"a", "a", "\\$1"}), "'$1'");
    EXPECT_EQ(Call("replace", {"a", "a", "\\\\1"}), "'\\1'");
    EXPECT_EQ(Call("replace", {"a", "a", "\\"}), "'\\'");
}

TEST(Replace, IsMissing_WhenPatternOrReplacementCannotBeUsed) {
    EXPECT_EQ(Call("replace", {"a", "(", "b"}), "missing");
    EXPECT_EQ(Call("replace", {"a", "a", "$1"}), "missing");
    EXPECT_EQ(Call("replace", {"a", "(a)", "\\2"}), "missing");
}

TEST(Replace, IsMissing_WhenTheTextWouldGrowTooLong) {
    const std::string text(2'000, 'a');
    EXPECT_EQ(Call("replace", {text, "a", std::string(500, 'b')}).size(), 1'000'002U);
    EXPECT_EQ(Call("replace", {text, "a", std::string(501, 'b')}), "missing");
}

TEST(Replace, IsMissing_WhenSearchingCouldTakeForever) {
    const std::string text(900'000, 'a');
    EXPECT_EQ(Call("replace", {text, "b|c", "d"}), "'" + text + "'");
    EXPECT_EQ(Call("replace", {text, "a.*b|a", "c"}), "missing");
    EXPECT_EQ(Call("replace", {std::string(20'000, 'a'), "(?i)(a[^b]{0,100}){1,5}b|\\pL", "c"}), "missing");
}

TEST(Replace, ReplacesAnyNumberOfMatches_WhenThePatternIsPlain) {
    const std::string text(900'000, 'a');
    for (const char* pattern : {"a", "[ab]", "\\w", "(?i)A", "[^b]"})
        EXPECT_EQ(Call("replace", {text, pattern, "b"}), "'" + std::string(900'000, 'b') + "'") << pattern;
    EXPECT_EQ(Call("replace", {text, "\\w+", "b"}), "'b'");
    EXPECT_EQ(Call("replace", {text, "[a-c]+", "b"}), "'b'");
}

TEST(Replace, CountsTheWholeRestForEveryMatch_WhenThePatternMayLookAhead) {
    const std::string text(900'000, 'a');
    for (const char* pattern :
         {"a|b", "ab?", "a{1}", "(a)", "a\\b|a", "\\w(?:.*b)?", "[a](?:.*[b])?", "\\pL", "[[:alpha:]]"})
        EXPECT_EQ(Call("replace", {text, pattern, "b"}), "missing") << pattern;
}

TEST(Matches, IsMissing_WhenSearchingCouldTakeForever) {
    const std::string text(1'000'000, 'a');
    EXPECT_EQ(Call("matches", {text, "(a[^b]{0,10}){1,5}b"}), "false");
    EXPECT_EQ(Call("matches", {text + text + text + text, "(?:[^b]{0,100}a){5}b"}), "missing");
}

TEST(RegularExpressions, AreMissing_WhenThereAreManyToCompile) {
    const auto anyOf = [](int count) {
        std::string calls;
        for (int i = 0; i < count; ++i)
            calls += Apply("matches", Text("a") + Apply("concat", Text("a|") + Text(std::string(2'000, 'b'))));
        return Applied("and", calls);
    };
    EXPECT_EQ(anyOf(10), "text true");
    EXPECT_EQ(anyOf(40), "absent");
}

TEST(RegularExpressions, AreRefusedWithTheDocument_WhenTheyAreTogetherTooLarge) {
    const auto refusal = [](const std::string& pattern, int count) {
        std::string fields;
        for (int i = 0; i < count; ++i) {
            fields += "<DerivedField name='d" + std::to_string(i) + "' dataType='boolean'>" +
                      Apply("matches", Text("a") + Text(pattern + std::to_string(i % 500))) + "</DerivedField>";
        }
        const auto refused = RefusalOf([&] { DerivedDocument(caseFields, fields); });
        return refused ? std::to_string(refused->GetCode()) + " " + refused->GetMessage() : "none";
    };
    EXPECT_EQ(refusal("a", 5'000), "none");  // ten times the same ones
    EXPECT_EQ(refusal("\\pL\\pN", 250), "none");
    EXPECT_EQ(refusal("\\pL\\pN", 500),
              "12 The regular expressions of the document are together more than 256 megabytes of memory could hold.");
    EXPECT_EQ(refusal(std::string(50'000, 'a'), 3),
              "12 The regular expressions of the document are together longer than 100,000 bytes.");
}

TEST(RegularExpressions, GiveTheSame_WhetherThePatternIsConstantOrNot) {
    const std::string computed = Apply("concat", Text("(b") + Text("+)"));
    EXPECT_EQ(Applied("matches", Text("abbc") + Text("(b+)")), "text true");
    EXPECT_EQ(Applied("matches", Text("abbc") + computed), "text true");
    EXPECT_EQ(Applied("replace", Text("abbc") + Text("(b+)") + Text("-$1-")), "text a-bb-c");
    EXPECT_EQ(Applied("replace", Text("abbc") + computed + Text("-$1-")), "text a-bb-c");
    EXPECT_EQ(Applied("matches", Text("abbc") + Apply("concat", Text("(b") + Text(""))), "absent");
}

TEST(RegularExpressions, AreMissing_WhenAnArgumentIs) {
    EXPECT_EQ(Applied("matches", missingArgument + Text("a")), "absent");
    EXPECT_EQ(Applied("matches", Text("a") + missingArgument), "absent");
    EXPECT_EQ(Applied("replace", Text("a") + Text("a") + missingArgument), "absent");
}

TEST(RegularExpressions, AreRefusedWithTheDocument_WhenConstantAndUnusable) {
    const auto pattern = RefusalOf([] { Applied("matches", "<FieldRef field='s'/>" + Text("[a")); });
    ASSERT_TRUE(pattern);
    EXPECT_EQ(pattern->GetCode(), VeskException::InvalidContent);
    EXPECT_EQ(pattern->GetMessage(), "The pattern \"[a\" of the function \"matches\" cannot be used: missing ]: [a.");
    const auto group = RefusalOf([] { Applied("replace", Text("a") + Text("(a)") + Text("$2")); });
    ASSERT_TRUE(group);
    EXPECT_EQ(
        group->GetMessage(),
        "The replacement \"$2\" of the function \"replace\" cannot be used: the pattern has no group of that number.");
}

TEST(RegularExpressions, AreQuotedShortAndWithoutControlCharacters_WhenRefused) {
    const auto refusal = RefusalOf([] { Applied("matches", Text("a") + Text("(\t\u009B" + std::string(500, 'a'))); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetMessage().find('\t'), std::string::npos);
    EXPECT_EQ(refusal->GetMessage().find("\u009B"), std::string::npos);
    EXPECT_LT(refusal->GetMessage().size(), 300U);
}

RC_GTEST_PROP(RegularExpressions, LeaveTheText_WhenTheMatchReplacesItself, (std::string text)) {
    RC_ASSERT(Call("replace", {text, "[a-z]*", "$0"}) == "'" + text + "'");
}

}  // namespace
}  // namespace nbscore::test

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "transform/functions/AppliedFunction.h"
#include "transform/functions/FunctionCall.h"

namespace nbscore::test {
namespace {

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

TEST(Replace, PutsGroupsIn) {
    EXPECT_EQ(Call("replace", {"Doe, John", "(\\w+), (\\w+)", "$2 $1"}), "'John Doe'");
    EXPECT_EQ(Call("replace", {"Doe, John", "(\\w+), (\\w+)", "\\2 \\1"}), "'John Doe'");
    EXPECT_EQ(Call("replace", {"ab", "[ab]", "<$0>"}), "'<a><b>'");
    EXPECT_EQ(Call("replace", {"ab", "[ab]", "\\0\\0"}), "'aabb'");
    EXPECT_EQ(Call("replace", {"ab", "(a)|(b)", "[$1|$2]"}), "'[a|][|b]'");
    EXPECT_EQ(Call("replace", {"a", "(a)", "$10"}), "'a0'");
}

TEST(Replace, TakesOtherSignsAsTheyStand) {
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

TEST(Replace, CountsTheWholeRestForEveryMatch_WhenThePatternMayLookOn) {
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

TEST(RegularExpressions, AreRefusedWithTheDocument_WhenTheyAreTogetherTooMuch) {
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

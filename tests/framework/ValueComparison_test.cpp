#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace {

/// Reads as a number and as a text but says that it is neither.
class ListLike : public NumericValue {
public:
    using NumericValue::NumericValue;
    ValueType GetType() const override { return Vector; }
};

/// A number of a class that the framework does not know.
class Doubled : public NumericValue {
public:
    using NumericValue::NumericValue;
    double GetDouble() const override { return 2.0 * NumericValue::GetDouble(); }
};

/// What all five comparisons say, as one text that names those that hold.
std::string Relations(const ScoreValue& left, const ScoreValue& right) {
    std::string relations;
    if (left == right) relations += "== ";
    if (left < right) relations += "< ";
    if (left <= right) relations += "<= ";
    if (left > right) relations += "> ";
    if (left >= right) relations += ">= ";
    return relations;
}

const char* const smaller = "< <= ";
const char* const larger = "> >= ";
const char* const same = "== <= >= ";
const char* const nothing = "";

TEST(ValueComparison, OrdersNumbersBySize) {
    EXPECT_EQ(Relations(NumericValue(9.0), NumericValue(10.0)), smaller);
    EXPECT_EQ(Relations(NumericValue(10.0), NumericValue(9.0)), larger);
    EXPECT_EQ(Relations(NumericValue(1.5), NumericValue(1.5)), same);
    EXPECT_EQ(Relations(NumericValue(0.0), NumericValue(-0.0)), same);
}

TEST(ValueComparison, ComparesNumbersExactly) {
    EXPECT_EQ(Relations(NumericValue(0.1 + 0.2), NumericValue(0.3)), larger);
}

TEST(ValueComparison, OrdersTextsByteByByte) {
    EXPECT_EQ(Relations(StringValue("10"), StringValue("9")), smaller);
    EXPECT_EQ(Relations(StringValue("a"), StringValue("B")), larger);
    EXPECT_EQ(Relations(StringValue("red"), StringValue("red")), same);
    EXPECT_EQ(Relations(StringValue("red"), StringValue("red ")), smaller);
    EXPECT_EQ(Relations(StringValue("z"), StringValue("\xC3\xA4")), smaller);
}

TEST(ValueComparison, RelatesNoNumberToAText) {
    EXPECT_EQ(Relations(NumericValue(1.0), StringValue("1")), nothing);
    EXPECT_EQ(Relations(StringValue("1"), NumericValue(1.0)), nothing);
    EXPECT_EQ(Relations(StringValue(""), NumericValue(NumericValue::GetSysmisValue())), nothing);
}

TEST(ValueComparison, RelatesNumbersAndTextsToNoOtherKind) {
    EXPECT_EQ(Relations(NumericValue(1.0), ListLike(1.0)), nothing);
    EXPECT_EQ(Relations(StringValue("1"), ListLike(1.0)), nothing);
    const ListLike list(1.0);
    EXPECT_FALSE(StringValue("1").Equal(&list, true, true));
}

TEST(ValueComparison, AsksAnyNumericClassForItsNumber) {
    EXPECT_EQ(Relations(NumericValue(4.0), Doubled(2.0)), same);
    EXPECT_EQ(Relations(NumericValue(4.0), Doubled(4.0)), smaller);
}

TEST(ValueComparison, RelatesANanToNothing) {
    const NumericValue nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Relations(nan, nan), nothing);
    EXPECT_EQ(Relations(nan, NumericValue(1.0)), nothing);
}

TEST(ValueComparison, TakesSystemMissingForTheSmallestFiniteNumber) {
    const NumericValue missing(NumericValue::GetSysmisValue());
    EXPECT_EQ(Relations(missing, missing), same);
    EXPECT_EQ(Relations(missing, NumericValue(-1e308)), smaller);
}

TEST(Equal, IsPlainEquality_WithoutRefinements) {
    const NumericValue one(1.0), alsoOne(1.0), two(2.0);
    const StringValue red("red"), alsoRed("red"), shoutedRed("RED"), oneText("1");
    EXPECT_TRUE(one.Equal(&alsoOne, false, false));
    EXPECT_FALSE(one.Equal(&two, false, false));
    EXPECT_TRUE(red.Equal(&alsoRed, false, false));
    EXPECT_FALSE(red.Equal(&shoutedRed, false, false));
    EXPECT_FALSE(one.Equal(&oneText, false, false));
    EXPECT_FALSE(oneText.Equal(&one, false, false));
}

TEST(Equal, IgnoresTheCaseOfAsciiLetters_WhenAsked) {
    const StringValue text("AzmaZ"), otherCase("aZMAz"), longer("AzmaZ ");
    EXPECT_TRUE(text.Equal(&otherCase, true, false));
    EXPECT_TRUE(otherCase.Equal(&text, true, false));
    EXPECT_FALSE(text.Equal(&longer, true, false));

    // Neighbours of the letters, as far apart as a letter's two cases.
    const StringValue at("@"), backtick("`"), bracket("["), brace("{");
    EXPECT_FALSE(at.Equal(&backtick, true, false));
    EXPECT_FALSE(bracket.Equal(&brace, true, false));

    const StringValue lowerUmlaut("\xC3\xA4"), upperUmlaut("\xC3\x84");
    EXPECT_FALSE(lowerUmlaut.Equal(&upperUmlaut, true, false));
}

TEST(Equal, RelatesNoNumberToAText_EvenWhenCaseIsIgnored) {
    const StringValue text("1e5");
    const NumericValue number(1e5);
    EXPECT_FALSE(text.Equal(&number, true, true));
    EXPECT_FALSE(number.Equal(&text, true, true));
}

/// A value of another kind that is missing.
class MissingList : public ListLike {
public:
    MissingList() : ListLike(0.0) {}
    bool IsSystemMissingValue() const override { return true; }
};

TEST(Equal, TakesAllSystemMissingValuesForEqual_WhenAsked) {
    const NumericValue missing(NumericValue::GetSysmisValue()), zero(0.0);
    const MissingList missingList;
    EXPECT_TRUE(missing.Equal(&missingList, false, true));
    EXPECT_FALSE(missing.Equal(&missingList, false, false));
    EXPECT_FALSE(zero.Equal(&missingList, false, true));
    EXPECT_FALSE(missing.Equal(&zero, false, true));
}

TEST(Equal, IsFalse_ForNull) {
    EXPECT_FALSE(NumericValue(NumericValue::GetSysmisValue()).Equal(nullptr, true, true));
    EXPECT_FALSE(StringValue("").Equal(nullptr, true, true));
}

RC_GTEST_PROP(ValueComparison, OfTextsAgreesWithTheirBytes, (const std::string& left, const std::string& right)) {
    const StringValue leftValue(left), rightValue(right);
    const ScoreValue& a = leftValue;
    const ScoreValue& b = rightValue;
    RC_ASSERT((a < b) == (left < right));
    RC_ASSERT((a > b) == (left > right));
    RC_ASSERT((a <= b) == (left <= right));
    RC_ASSERT((a >= b) == (left >= right));
    RC_ASSERT((a == b) == (left == right));
}

}  // namespace

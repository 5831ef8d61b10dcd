#include "framework/NumericValue.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "framework/MCMV.h"
#include "framework/StringValue.h"

namespace {

TEST(NumericValue, HoldsANumber) {
    NumericValue value(2.75);
    EXPECT_EQ(value.GetDouble(), 2.75);
    EXPECT_EQ(value.GetInt(), 2);
    EXPECT_EQ(value.GetString(), "2.75");
    EXPECT_EQ(value.GetType(), ScoreValue::Numeric);
    EXPECT_FALSE(value.IsSystemMissingValue());

    value.SetDoubleValue(-3.0);
    EXPECT_EQ(value.GetDouble(), -3.0);
}

TEST(NumericValue, ReadsItsNumber_FromText) {
    EXPECT_EQ(NumericValue(std::string("  -1.5e2\n")).GetDouble(), -150.0);
    EXPECT_EQ(NumericValue("12").GetDouble(), 12.0);
}

TEST(NumericValue, IsSystemMissing_WhenTheTextIsNoNumber) {
    for (const char* text : {"", " ", "abc", "1,5", "12 kg", "0x10", "nan", "inf", "1e999"}) {
        const NumericValue value{std::string(text)};
        EXPECT_TRUE(value.IsSystemMissingValue()) << '"' << text << '"';
        EXPECT_EQ(value.GetDouble(), MCMV::gMissingValue) << '"' << text << '"';
    }
}

TEST(NumericValue, HasTheMissingValueForSystemMissing) {
    EXPECT_EQ(NumericValue::GetSysmisValue(), MCMV::gMissingValue);
    EXPECT_TRUE(NumericValue(MCMV::gMissingValue).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(std::numeric_limits<double>::quiet_NaN()).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(-std::numeric_limits<double>::infinity()).IsSystemMissingValue());
}

TEST(NumericValue, HasNoText_WhenSystemMissing) {
    EXPECT_EQ(NumericValue(NumericValue::GetSysmisValue()).GetString(), "");
}

TEST(NumericValue, TruncatesAndSaturatesItsInt) {
    EXPECT_EQ(NumericValue(-2.9).GetInt(), -2);
    EXPECT_EQ(NumericValue(1e10).GetInt(), 2147483647);
    EXPECT_EQ(NumericValue(NumericValue::GetSysmisValue()).GetInt(), -2147483647 - 1);
    EXPECT_EQ(NumericValue(std::numeric_limits<double>::quiet_NaN()).GetInt(), 0);
}

TEST(NumericValue, IsIndependentOfItsCopies) {
    NumericValue original(1.0);
    const std::unique_ptr<ScoreValue> clone(original.Clone());
    const std::unique_ptr<ScoreValue> copy(original.GetValue());
    original.SetDoubleValue(2.0);

    EXPECT_EQ(clone->GetDouble(), 1.0);
    EXPECT_EQ(copy->GetDouble(), 1.0);
    EXPECT_EQ(clone->GetType(), ScoreValue::Numeric);
}

TEST(NumericValue, TakesOverANumber) {
    NumericValue value(1.0);
    const NumericValue other(5.5);
    value.SetValue(&other);
    EXPECT_EQ(value.GetDouble(), 5.5);
    value.SetValue(&value);
    EXPECT_EQ(value.GetDouble(), 5.5);
}

TEST(NumericValue, TakesOverATextsNumber) {
    NumericValue value(1.0);
    const StringValue number("42");
    value.SetValue(&number);
    EXPECT_EQ(value.GetDouble(), 42.0);

    const StringValue word("forty-two");
    value.SetValue(&word);
    EXPECT_TRUE(value.IsSystemMissingValue());
}

TEST(NumericValue, BecomesSystemMissing_WhenNullIsTakenOver) {
    NumericValue value(1.0);
    value.SetValue(nullptr);
    EXPECT_TRUE(value.IsSystemMissingValue());
}

}  // namespace

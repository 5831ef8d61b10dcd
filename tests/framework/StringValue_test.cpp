#include "framework/StringValue.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/NumericValue.h"

namespace {

TEST(StringValue, HoldsAText) {
    StringValue value("red");
    EXPECT_EQ(value.GetString(), "red");
    EXPECT_EQ(value.GetText(), "red");
    EXPECT_EQ(value.GetType(), ScoreValue::String);

    value.SetString("green");
    EXPECT_EQ(value.GetString(), "green");
    value.SetText(std::string_view("blueish").substr(0, 4));
    EXPECT_EQ(value.GetString(), "blue");
}

TEST(StringValue, KeepsEveryByte) {
    const std::string bytes("a\0b\xFF \n", 6);
    EXPECT_EQ(StringValue(bytes).GetString(), bytes);
}

TEST(StringValue, ReadsAsTheNumberItHolds) {
    EXPECT_EQ(StringValue(" 2.5 ").GetDouble(), 2.5);
    EXPECT_EQ(StringValue("-2.9").GetInt(), -2);
    EXPECT_EQ(StringValue("1e10").GetInt(), 2147483647);
}

TEST(StringValue, ReadsAsSystemMissing_WhenItHoldsNoNumber) {
    EXPECT_EQ(StringValue("red").GetDouble(), NumericValue::GetSysmisValue());
    EXPECT_EQ(StringValue("").GetDouble(), NumericValue::GetSysmisValue());
    EXPECT_EQ(StringValue("red").GetInt(), -2147483647 - 1);
}

TEST(StringValue, IsNeverSystemMissing) {
    EXPECT_FALSE(StringValue("").IsSystemMissingValue());
    EXPECT_FALSE(StringValue("red").IsSystemMissingValue());
}

TEST(StringValue, IsIndependentOfItsCopies) {
    StringValue original("red");
    const std::unique_ptr<ScoreValue> clone(original.Clone());
    const std::unique_ptr<ScoreValue> copy(original.GetValue());
    original.SetString("green");

    EXPECT_EQ(clone->GetString(), "red");
    EXPECT_EQ(copy->GetString(), "red");
    EXPECT_EQ(clone->GetType(), ScoreValue::String);
}

TEST(StringValue, TakesOverAnyValueAsText) {
    StringValue value("red");
    const StringValue text("green");
    value.SetValue(&text);
    EXPECT_EQ(value.GetString(), "green");
    value.SetValue(&value);
    EXPECT_EQ(value.GetString(), "green");

    const NumericValue number(0.5);
    value.SetValue(&number);
    EXPECT_EQ(value.GetString(), "0.5");
}

TEST(StringValue, BecomesEmpty_WhenNothingIsTakenOver) {
    StringValue value("red");
    value.SetValue(nullptr);
    EXPECT_EQ(value.GetString(), "");

    value.SetString("red");
    const NumericValue missing(NumericValue::GetSysmisValue());
    value.SetValue(&missing);
    EXPECT_EQ(value.GetString(), "");
}

}  // namespace

#include "standard/ValuePositions.h"

#include <gtest/gtest.h>

#include "framework/MCMV.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore::test {
namespace {

TEST(ValuePositions, FindNumbersHoweverTheyAreWritten) {
    ValuePositions values(ValueKind::Number);
    EXPECT_TRUE(values.Add("1"));
    EXPECT_FALSE(values.Add("1.0"));
    EXPECT_TRUE(values.Add("2"));
    EXPECT_EQ(values.GetSize(), 3U);
    EXPECT_EQ(values.Find("1e0"), 0U);
    EXPECT_EQ(values.Find(NumericValue(2)), 2U);
    EXPECT_EQ(values.Find(StringValue("2.0")), 2U);
    EXPECT_FALSE(values.Find("3"));
    EXPECT_FALSE(values.Find(StringValue("two")));
}

TEST(ValuePositions, FindTheMissingNumber) {
    ValuePositions values(ValueKind::Number);
    EXPECT_TRUE(values.Add("0"));
    EXPECT_TRUE(values.Add(NumericValue(MCMV::gMissingValue).GetString()));
    EXPECT_EQ(values.Find(NumericValue(MCMV::gMissingValue)), 1U);
}

TEST(ValuePositions, FindTextsToTheLetter) {
    ValuePositions values(ValueKind::Text);
    EXPECT_TRUE(values.Add("1"));
    EXPECT_TRUE(values.Add("1.0"));
    EXPECT_FALSE(values.Add("1"));
    EXPECT_EQ(values.Find("1.0"), 1U);
    EXPECT_EQ(values.Find(StringValue("1")), 0U);
    EXPECT_FALSE(values.Find(" 1"));
}

TEST(ValuePositions, FindTruthValuesInAnySpelling) {
    ValuePositions values(ValueKind::Truth);
    EXPECT_TRUE(values.Add("TRUE"));
    EXPECT_TRUE(values.Add("perhaps"));
    EXPECT_FALSE(values.Add("1"));
    EXPECT_EQ(values.Find("True"), 0U);
    EXPECT_EQ(values.Find(StringValue("1.0")), 0U);
    EXPECT_EQ(values.Find("perhaps"), 1U);
    EXPECT_FALSE(values.Find("false"));
    EXPECT_FALSE(values.Find("Perhaps"));
}

}  // namespace
}  // namespace nbscore::test

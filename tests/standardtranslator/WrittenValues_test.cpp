#include "standardtranslator/WrittenValues.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/BaseDictVar.h"
#include "framework/MCMV.h"
#include "framework/NumericValue.h"

namespace nbscore::test {
namespace {

TEST(WrittenValues, FindNumbersHoweverTheyAreWritten) {
    WrittenValues values(ValueKind::Number);
    EXPECT_TRUE(values.Add("1"));
    EXPECT_TRUE(values.Add("-0"));
    EXPECT_FALSE(values.Add("1.00"));
    EXPECT_EQ(values.Find("1e0"), 0U);
    EXPECT_EQ(values.Find(" 0.0 "), 1U);
    EXPECT_FALSE(values.Find("2"));
    EXPECT_FALSE(values.Find("one"));
}

TEST(WrittenValues, HoldTheMissingNumber_WhoseTextReadsAsNone) {
    BaseDictVar field("n", ScoreDictVar::NumericStorage, ScoreDictVar::Categorical);
    field.AddValidValue(std::make_unique<NumericValue>(MCMV::gMissingValue), "");
    field.AddValidValue(std::make_unique<NumericValue>(1.0), "");
    const WrittenValues values(field);
    EXPECT_EQ(values.GetSize(), 2U);
    EXPECT_EQ(values.Find("1.0"), 1U);
    EXPECT_EQ(values.Find("-1.7976931348623157e308"), 0U);
}

TEST(WrittenValues, FindTruthValuesInAnySpelling_AndOtherTextsWithoutBlanks) {
    WrittenValues values(ValueKind::Truth);
    EXPECT_TRUE(values.Add("TRUE"));
    EXPECT_TRUE(values.Add("perhaps"));
    EXPECT_EQ(values.Find(" true"), 0U);
    EXPECT_EQ(values.Find(" perhaps"), 1U);
}

TEST(WrittenValues, FindTextsAsTheyStand_OrElseWithoutBlanks) {
    WrittenValues values(ValueKind::Text);
    EXPECT_TRUE(values.Add(" red"));
    EXPECT_TRUE(values.Add("green"));
    EXPECT_EQ(values.Find(" red"), 0U);
    EXPECT_EQ(values.Find("red"), 0U);
    EXPECT_EQ(values.Find("\tgreen\n"), 1U);
    EXPECT_FALSE(values.Find("Red"));
}

TEST(WrittenValues, FindNothing_WhereItIsNotClearWhichTextIsMeant) {
    WrittenValues values(ValueKind::Text);
    values.Add(" red");
    values.Add("red ");
    EXPECT_EQ(values.Find("red "), 1U);
    EXPECT_FALSE(values.Find("red"));
}

TEST(WrittenNames, AreFoundWithOtherBlanks) {
    WrittenNames names;
    names.Add(" x");
    names.Add("y");
    names.Add("y");
    EXPECT_EQ(names.Find("x"), " x");
    EXPECT_EQ(names.Find("x "), " x");
    EXPECT_EQ(names.Find(" y"), "y");
    EXPECT_EQ(names.Find(" z"), " z");
}

}  // namespace
}  // namespace nbscore::test

#include "standardtranslator/WrittenValues.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

TEST(WrittenValues, FindNumbersHoweverTheyAreWritten) {
    WrittenValues values(true);
    EXPECT_TRUE(values.Add("1"));
    EXPECT_TRUE(values.Add("-0"));
    EXPECT_FALSE(values.Add("1.00"));
    EXPECT_EQ(values.Find("1e0"), 0U);
    EXPECT_EQ(values.Find(" 0.0 "), 1U);
    EXPECT_FALSE(values.Find("2"));
    EXPECT_FALSE(values.Find("one"));
}

TEST(WrittenValues, FindTextsAsTheyStand_OrElseWithoutBlanks) {
    WrittenValues values(false);
    EXPECT_TRUE(values.Add(" red"));
    EXPECT_TRUE(values.Add("green"));
    EXPECT_EQ(values.Find(" red"), 0U);
    EXPECT_EQ(values.Find("red"), 0U);
    EXPECT_EQ(values.Find("\tgreen\n"), 1U);
    EXPECT_FALSE(values.Find("Red"));
}

TEST(WrittenValues, FindNothing_WhereItIsNotClearWhichTextIsMeant) {
    WrittenValues values(false);
    values.Add(" red");
    values.Add("red ");
    EXPECT_EQ(values.Find("red "), 1U);
    EXPECT_FALSE(values.Find("red"));
}

}  // namespace
}  // namespace nbscore::test

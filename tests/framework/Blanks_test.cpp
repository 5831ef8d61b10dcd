#include "framework/Blanks.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

TEST(Blanks, AreSpacesTabsAndLineEnds) {
    for (const char32_t unit : {U' ', U'\t', U'\r', U'\n'})
        EXPECT_TRUE(IsBlank(unit));
    // The last two are a space in their lowest byte.
    for (const char32_t unit : {U'a', U'\0', U'\u00A0', U'\u0120', U'\u2020'})
        EXPECT_FALSE(IsBlank(unit));
}

TEST(Blanks, AreTakenOffBothEnds) {
    EXPECT_EQ(WithoutBlanks(" \t\r\na b\n "), "a b");
    EXPECT_EQ(WithoutBlanks("a"), "a");
    EXPECT_EQ(WithoutBlanks(" \n"), "");
    EXPECT_EQ(WithoutBlanks(""), "");
    EXPECT_EQ(WithoutBlanks("\u00A0a\u00A0"), "\u00A0a\u00A0");
}

}  // namespace
}  // namespace nbscore::test

#include "host/MessagePattern.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

TEST(MessagePattern, FitsTheSameText) {
    EXPECT_TRUE(FitsPattern("abc", "abc"));
    EXPECT_FALSE(FitsPattern("abcd", "abc"));
    EXPECT_FALSE(FitsPattern("ab", "abc"));
    EXPECT_TRUE(FitsPattern("", ""));
}

TEST(MessagePattern, FitsAnyTextForAStar) {
    EXPECT_TRUE(FitsPattern("", "*"));
    EXPECT_TRUE(FitsPattern("the end", "*end"));
    EXPECT_TRUE(FitsPattern("the end", "the*"));
    EXPECT_TRUE(FitsPattern("the end", "the end*"));
    EXPECT_TRUE(FitsPattern("is is above above 1.", "* is above *"));
    EXPECT_FALSE(FitsPattern("the end.", "*end"));
    EXPECT_FALSE(FitsPattern("at the end", "the*"));
}

TEST(MessagePattern, FitsPiecesInTheirOrderOnly) {
    EXPECT_TRUE(FitsPattern("a1b2c", "a*b*c"));
    EXPECT_FALSE(FitsPattern("a1c2b", "a*b*c"));
    EXPECT_FALSE(FitsPattern("ab", "ab*b"));
    EXPECT_FALSE(FitsPattern("aba", "aba*ba"));
    EXPECT_TRUE(FitsPattern("\"0,5\" is no number.", "\"*,*\" is no *"));
}

}  // namespace
}  // namespace nbscore::test

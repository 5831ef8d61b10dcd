#include "framework/ControlCharacters.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

TEST(ControlCharacters, BecomeQuestionMarks) {
    EXPECT_EQ(MaskControls("a\nb\x1B[1m\x7F"), "a?b?[1m?");
    EXPECT_EQ(MaskControls(std::string_view("a\0b", 3)), "a?b");
}

TEST(ControlCharacters, OfTwoBytesBecomeOneQuestionMark) {
    EXPECT_EQ(MaskControls("\u0080a\u009B1m\u009F"), "?a?1m?");
}

TEST(ControlCharacters, AreThoseThatChangeTheDirectionOfWriting) {
    EXPECT_EQ(MaskControls("\u061C"), "?");
    EXPECT_EQ(MaskControls("\u200Ea\u200F"), "?a?");
    EXPECT_EQ(MaskControls("\u202Aa\u202E"), "?a?");
    EXPECT_EQ(MaskControls("\u2066a\u2069"), "?a?");
    const std::string neighbours = "\u061B\u061D\u200D\u2010\u2027\u202F\u2065\u206A\u30AA";
    EXPECT_EQ(MaskControls(neighbours), neighbours);
    EXPECT_EQ(MaskControls("a\xE2\x80"), "a\xE2\x80");
}

TEST(ControlCharacters, AreThoseThatEndLinesAndParagraphs) {
    EXPECT_EQ(MaskControls("a\u2028b\u2029"), "a?b?");
}

TEST(ControlCharacters, AreNoOtherCharacters) {
    const std::string text = "Maß \u00A0 \u00C2 \U0001F600 \" ?";
    EXPECT_EQ(MaskControls(text), text);
    // Half a character at the end is none.
    EXPECT_EQ(MaskControls("a\xC2"), "a\xC2");
}

}  // namespace
}  // namespace nbscore::test

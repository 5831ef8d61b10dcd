#include "cli/help/HelpText.h"

#include <gtest/gtest.h>

namespace nbscore {

TEST(HelpText, IsTakenApartAtEmptyLines) {
    const std::vector<HelpBlock> blocks = ReadHelpText("One\ntwo.\n\nExamples:\n\n  a:\n    b\n\n\nEnd.");

    ASSERT_EQ(blocks.size(), 4U);
    EXPECT_EQ(blocks[0].kind, HelpBlock::Kind::Paragraph);
    EXPECT_EQ(blocks[0].text, "One\ntwo.");
    EXPECT_EQ(blocks[1].kind, HelpBlock::Kind::Heading);
    EXPECT_EQ(blocks[1].text, "Examples");
    EXPECT_EQ(blocks[2].kind, HelpBlock::Kind::Verbatim);
    EXPECT_EQ(blocks[2].text, "  a:\n    b");
    EXPECT_EQ(blocks[3].text, "End.");
}

TEST(HelpText, HasNoBlocks_WhenEmpty) {
    EXPECT_TRUE(ReadHelpText("").empty());
    EXPECT_TRUE(ReadHelpText("\n\n").empty());
}

TEST(HelpText, IsSummedUpByItsFirstLine) {
    EXPECT_EQ(GetHelpSummary("First.\n\nMore."), "First.");
    EXPECT_EQ(GetHelpSummary("First."), "First.");
}

TEST(HelpText, IsWrappedAtTheWidth) {
    std::string out = "--a ";
    AppendWrapped(out, "one two three  four\nfive", 4, 11);
    EXPECT_EQ(out, "--a one two\n    three\n    four\n    five\n");
}

TEST(HelpText, KeepsAWordWhole_WhenItIsLongerThanALine) {
    std::string out;
    AppendWrapped(out, "a verylongword b", 0, 6);
    EXPECT_EQ(out, "a\nverylongword\nb\n");
}

}  // namespace nbscore

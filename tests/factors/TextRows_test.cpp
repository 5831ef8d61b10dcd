#include "factors/KnownRows.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <optional>
#include <set>

#include "framework/NumberText.h"

namespace nbscore {
namespace {

TextRows RowsOf(const std::vector<std::string>& texts) {
    std::vector<const std::string*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(&text);
    return TextRows(pointers);
}

TEST(TextRows, AreTheTextsPositionsBehindMissingAndUnknown) {
    const TextRows rows = RowsOf({"red", "", "blue"});
    EXPECT_EQ(rows.GetNumRows(), 5u);
    EXPECT_EQ(rows.RowOf("red"), 2u);
    EXPECT_EQ(rows.RowOf(""), 3u);
    EXPECT_EQ(rows.RowOf("blue"), 4u);
}

TEST(TextRows, AreTheUnknownOne_ForTextsThatDifferByAnyByte) {
    const TextRows rows = RowsOf({"red", "blue"});
    for (const std::string_view text : {"", "Red", "red ", " red", "re", "redd", "green"})
        EXPECT_EQ(rows.RowOf(text), unknownRow) << text;
    EXPECT_EQ(rows.RowOf(std::string_view("red\0", 4)), unknownRow);
}

/// All texts of up to nine of two bytes, one of them zero: every other one is known.
TEST(TextRows, TellAllShortTextsApart) {
    std::vector<std::string> all;
    for (std::size_t size = 0; size <= 9; ++size) {
        for (unsigned bits = 0; bits < 1U << size; ++bits) {
            std::string& text = all.emplace_back();
            for (std::size_t i = 0; i < size; ++i)
                text += (bits >> i) % 2 == 0 ? '\0' : 'a';
        }
    }
    std::vector<std::string> known;
    for (std::size_t i = 0; i < all.size(); i += 2)
        known.push_back(all[i]);
    const TextRows rows = RowsOf(known);
    for (std::size_t i = 0; i < all.size(); ++i)
        EXPECT_EQ(rows.RowOf(all[i]), i % 2 == 0 ? firstKnownRow + i / 2 : unknownRow) << i;
}

TEST(TextRows, AreAllUnknown_WhenThereIsNoText) {
    const TextRows rows = RowsOf({});
    EXPECT_EQ(rows.GetNumRows(), std::size_t{firstKnownRow});
    EXPECT_EQ(rows.RowOf(""), unknownRow);
    EXPECT_EQ(rows.RowOf("red"), unknownRow);
}

TEST(TextRows, FindANumberByItsDigits) {
    const TextRows rows = RowsOf({"1", "0.5", "1.0", "-0"});
    EXPECT_EQ(rows.RowOf(1.0), 2u);
    EXPECT_EQ(rows.RowOf(0.5), 3u);
    EXPECT_EQ(rows.RowOf(2.0), unknownRow);
}

TEST(TextRows, StayFound_WhenTheTextsAndTheFirstCopyAreGone) {
    std::optional<TextRows> copy;
    {
        const TextRows first = RowsOf({"a text that is too long to stand within its object", "b"});
        copy = first;
    }
    EXPECT_EQ(copy->RowOf("a text that is too long to stand within its object"), 2u);
    EXPECT_EQ(copy->RowOf("b"), 3u);
}

RC_GTEST_PROP(TextRows, FindEachTextAndNoOther, (const std::set<std::string>& known, const std::string& other)) {
    const std::vector<std::string> texts(known.begin(), known.end());
    const TextRows rows = RowsOf(texts);
    for (std::size_t i = 0; i < texts.size(); ++i)
        RC_ASSERT(rows.RowOf(texts[i]) == firstKnownRow + i);
    if (!known.contains(other)) RC_ASSERT(rows.RowOf(other) == unknownRow);
}

/// Long and short texts that differ in a single byte, wherever it stands.
TEST(TextRows, TellTextsApart_WhoseLengthIsAny) {
    std::vector<std::string> texts;
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            texts.emplace_back(length, 'a');
            texts.back()[place] = 'b';
        }
    }
    const TextRows rows = RowsOf(texts);
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(rows.RowOf(texts[i]), firstKnownRow + i);
    EXPECT_EQ(rows.RowOf(std::string(20, 'a')), unknownRow);
}

}  // namespace
}  // namespace nbscore

#include "table/CellMemory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "table/TableBlockReader.h"

namespace nbscore::test {
namespace {

/// A text in front of other bytes, as cells stand in a block.
class PlacedText {
public:
    PlacedText(const std::string& cell, char behind) : length(cell.size()), bytes(cell) {
        bytes.append(TableBlock::slack, behind);
    }
    std::string_view Get() const { return std::string_view(bytes).substr(0, length); }

private:
    std::size_t length;
    std::string bytes;
};

template <typename Memory>
std::optional<FactorRow> Recall(const Memory& memory, const std::string& text) {
    const FactorRow row = memory.Find(PlacedText(text, '?').Get());
    return row == notKept ? std::nullopt : std::optional(row);
}

template <typename Memory>
void Keep(Memory& memory, const std::string& text, FactorRow row) {
    memory.Keep(PlacedText(text, ',').Get(), row);
}

TEST(CellMemory, GivesBackTheRowOfAText_WhateverStandsBehindIt) {
    CellMemory memory;
    EXPECT_EQ(Recall(memory, "a"), std::nullopt);
    Keep(memory, "a", 3);
    Keep(memory, "abcdefgh", 4);
    EXPECT_EQ(Recall(memory, "a"), 3U);
    EXPECT_EQ(Recall(memory, "abcdefgh"), 4U);
    EXPECT_EQ(Recall(memory, "abcdefg"), std::nullopt);
    Keep(memory, "a", 5);
    EXPECT_EQ(Recall(memory, "a"), 5U);
}

TEST(CellMemory, TextsOfZerosDifferByTheirLength) {
    CellMemory memory;
    for (std::size_t length = 1; length <= CellMemory::longestText; ++length) {
        EXPECT_EQ(Recall(memory, std::string(length, '\0')), std::nullopt);
        Keep(memory, std::string(length, '\0'), static_cast<FactorRow>(length));
        EXPECT_EQ(Recall(memory, std::string(length, '\0')), static_cast<FactorRow>(length));
        EXPECT_EQ(Recall(memory, "a" + std::string(length - 1, '\0')), std::nullopt);
    }
}

TEST(CellMemory, ATextIsForgottenAndNeverTakenForAnother_WhenThereAreMany) {
    CellMemory memory;
    const FactorRow texts = 100'000;
    for (FactorRow i = 0; i < texts; ++i) {
        Keep(memory, std::to_string(i), i);
        ASSERT_EQ(Recall(memory, std::to_string(i)), i);
    }
    FactorRow known = 0;
    for (FactorRow i = 0; i < texts; ++i) {
        const std::optional<FactorRow> row = Recall(memory, std::to_string(i));
        ASSERT_EQ(row.value_or(i), i);
        if (row) ++known;
    }
    EXPECT_GT(known, 500U);
    EXPECT_LE(known, 2048U);
}

TEST(CellMemory, TwoTextsOfOnePlaceStayRemembered_WhicheverIsMetLast) {
    CellMemory memory;
    // Among so many texts some share a place; none of two is ever driven out by the other.
    for (FactorRow i = 0; i < 80; ++i)
        Keep(memory, "text " + std::to_string(i), i);
    for (FactorRow i = 0; i < 80; ++i)
        EXPECT_EQ(Recall(memory, "text " + std::to_string(i)), i);
}

TEST(CellMemory, FindsEachOfAFewTextsAtOnce) {
    for (FactorRow texts = 1; texts <= 60; ++texts) {
        const auto textOf = [texts](FactorRow i) { return std::to_string(7919 * (texts + 1) * (i + 3) % 100'003); };
        CellMemory memory;
        for (FactorRow i = 0; i < texts; ++i)
            Keep(memory, textOf(i), i);
        for (FactorRow i = 0; i < texts; ++i)
            ASSERT_EQ(memory.FindLatest(PlacedText(textOf(i), 'x').Get()), i) << texts;
    }
}

std::optional<std::size_t> ReadWhole(const std::string& text, char behind = '7') {
    return WholeNumberMemory::Read(PlacedText(text, behind).Get());
}

TEST(WholeNumberMemory, ReadsDigits_WhateverStandsBehindThem) {
    for (const char behind : {'7', ',', '\n', '\xFF'}) {
        EXPECT_EQ(ReadWhole("0", behind), 0U);
        EXPECT_EQ(ReadWhole("9", behind), 9U);
        EXPECT_EQ(ReadWhole("10", behind), 10U);
        EXPECT_EQ(ReadWhole("12345", behind), 12345U);
        EXPECT_EQ(ReadWhole("00012345", behind), 12345U);
    }
    for (std::size_t number = 0; number < WholeNumberMemory::bound; ++number)
        ASSERT_EQ(ReadWhole(std::to_string(number)), number);
}

TEST(WholeNumberMemory, ReadsNothingElse) {
    EXPECT_EQ(ReadWhole(std::to_string(WholeNumberMemory::bound)), std::nullopt);
    EXPECT_EQ(ReadWhole("99999999"), std::nullopt);
    EXPECT_EQ(ReadWhole("000000001"), std::nullopt) << "more digits than are read at once";
    for (const char* text : {"-1", "+1", " 1", "1 ", "1.0", "1e3", "abc"})
        EXPECT_EQ(ReadWhole(text), std::nullopt) << text;
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = static_cast<char>(byte);
        if (character >= '0' && character <= '9') continue;
        for (std::size_t place = 0; place < 4; ++place) {
            std::string text = "1234";
            text[place] = character;
            EXPECT_EQ(ReadWhole(text), std::nullopt) << byte << " in place " << place;
        }
    }
}

TEST(WholeNumberMemory, GivesBackTheRowOfANumber_UnlessItIsHigh) {
    WholeNumberMemory memory;
    EXPECT_EQ(Recall(memory, "5"), std::nullopt);
    EXPECT_EQ(Recall(memory, ""), missingRow);
    Keep(memory, "many", 3);
    EXPECT_EQ(Recall(memory, "many"), std::nullopt);
    Keep(memory, "5", 254);
    Keep(memory, "4", missingRow);
    Keep(memory, "16383", 3);
    Keep(memory, "6", 255);
    Keep(memory, "7", 1000);
    EXPECT_EQ(Recall(memory, "5"), 254U);
    EXPECT_EQ(Recall(memory, "4"), missingRow);
    EXPECT_EQ(Recall(memory, "16383"), 3U);
    EXPECT_EQ(Recall(memory, "6"), std::nullopt);
    EXPECT_EQ(Recall(memory, "7"), std::nullopt);
}

}  // namespace
}  // namespace nbscore::test

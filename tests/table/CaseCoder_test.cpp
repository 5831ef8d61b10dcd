#include "table/CaseCoder.h"

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

std::optional<FactorRow> Recall(const CellMemory& memory, const std::string& text) {
    return memory.Find(PlacedText(text, '?').Get());
}

void Keep(CellMemory& memory, const std::string& text, FactorRow row) {
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

}  // namespace
}  // namespace nbscore::test

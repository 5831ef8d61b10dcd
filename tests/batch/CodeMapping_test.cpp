#include "batch/Loops.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "batch/InstructionSets.h"
#include "support/documents/RandomDraws.h"

namespace nbscore {
namespace {

class CodeMapping : public test::WithInstructionSet {};

/// As many rows as a list may have, that of code -1 in front.
std::vector<FactorRow> RowList(std::size_t size) {
    std::vector<FactorRow> rows;
    for (std::size_t i = 0; i < size; ++i)
        rows.push_back(static_cast<FactorRow>((i * 37 + 11) % 256));
    return rows;
}

TEST_P(CodeMapping, ReplacesEachCodeByItsRow_WhateverTheirNumber) {
    test::Randomness random(1);
    for (std::size_t size = 1; size <= longestListOfRows; ++size) {
        const std::vector<FactorRow> list = RowList(size);
        for (std::size_t count = 0; count < 200; count += count < 70 ? 1 : 13) {
            std::vector<std::int8_t> codes;
            for (std::size_t i = 0; i < count; ++i)
                codes.push_back(static_cast<std::int8_t>(test::Between(-1, static_cast<int>(size) - 2, random)));
            std::vector<std::uint8_t> rows(count);
            ASSERT_TRUE(MapCodes(codes, list, rows.data()));
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(rows[i], list[static_cast<std::size_t>(codes[i] + 1)]);
        }
    }
}

TEST_P(CodeMapping, RefusesACodeOutsideTheList_WhereverItStands) {
    for (const std::size_t size : {1U, 2U, 9U, 16U}) {
        const std::vector<FactorRow> list = RowList(size);
        for (const std::size_t count : {1U, 15U, 64U, 131U}) {
            std::vector<std::uint8_t> rows(count);
            for (std::size_t place = 0; place < count; ++place) {
                for (const int code : {-2, -128, 127, static_cast<int>(size) - 1}) {
                    std::vector<std::int8_t> codes(count, -1);
                    codes[place] = static_cast<std::int8_t>(code);
                    ASSERT_FALSE(MapCodes(codes, list, rows.data())) << code << " at " << place << " of " << count;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, CodeMapping, testing::ValuesIn(test::InstructionSets()),
                         test::NameOfInstructionSet);

}  // namespace
}  // namespace nbscore

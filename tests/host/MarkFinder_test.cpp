#include "host/MarkFinder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "batch/InstructionSets.h"

namespace nbscore::test {
namespace {

using Positions = std::vector<std::uint32_t>;

Positions FindByLooking(std::string_view bytes, char delimiter) {
    Positions positions;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char byte = bytes[i];
        if (byte == delimiter || byte == '"' || byte == '\r' || byte == '\n') {
            positions.push_back(static_cast<std::uint32_t>(i));
        }
    }
    return positions;
}

/// As an editor would: byte by byte, taking a line feed behind a carriage return with it.
std::size_t CountLinesByLooking(std::string_view bytes) {
    std::size_t lines = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n') continue;
        ++lines;
        if (bytes[i] == '\r' && bytes.substr(i + 1).starts_with('\n')) ++i;
    }
    return lines;
}

Positions Find(std::string_view bytes, char delimiter) {
    Positions positions(bytes.size());
    positions.resize(FindMarks(bytes, delimiter, positions.data()));
    return positions;
}

class MarkFinder : public WithInstructionSet {};

TEST_P(MarkFinder, FindsEveryMarkAndNothingElse_InTextsOfEveryLengthAndPlace) {
    std::mt19937 random(4180);
    std::string text(400, ' ');
    for (char& character : text)
        character = static_cast<char>(random() % 256);
    for (std::size_t i = 0; i < text.size(); i += 1 + random() % 9)
        text[i] = ",;\"\r\n"[random() % 5];
    for (const char delimiter : {',', ';', '\t', '\x7F', '\x01'}) {
        for (std::size_t length = 0; length <= 300; ++length) {
            const std::string_view piece = std::string_view(text).substr(length % 67, length);
            ASSERT_EQ(Find(piece, delimiter), FindByLooking(piece, delimiter)) << length;
            ASSERT_EQ(CountLineEnds(piece), CountLinesByLooking(piece)) << length;
        }
    }
}

TEST_P(MarkFinder, FindsAll_WhenEveryByteIsOne) {
    const std::string text(1000, '"');
    EXPECT_EQ(Find(text, ',').size(), text.size());
    EXPECT_EQ(Find(text, ','), FindByLooking(text, ','));
    EXPECT_EQ(CountLineEnds(std::string(100'000, '\n')), 100'000U);
    EXPECT_EQ(CountLineEnds(std::string(100'000, '\r')), 100'000U);
}

TEST_P(MarkFinder, FindsNone_WhenThereIsNone) {
    EXPECT_EQ(Find(std::string(1000, 'x'), ','), Positions{});
    EXPECT_EQ(Find("", ','), Positions{});
    EXPECT_EQ(CountLineEnds(std::string(1000, 'x')), 0U);
}

TEST_P(MarkFinder, ACarriageReturnAndALineFeedEndOneLine_WhereverTheyStand) {
    for (std::size_t before = 0; before <= 200; ++before) {
        const std::string text = std::string(before, 'x') + "\r\n" + std::string(100, 'x');
        ASSERT_EQ(CountLineEnds(text), 1U) << before;
        ASSERT_EQ(CountLineEnds(std::string_view(text).substr(0, before + 1)), 1U) << before;
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, MarkFinder, testing::ValuesIn(InstructionSets()), NameOfInstructionSet);

}  // namespace
}  // namespace nbscore::test

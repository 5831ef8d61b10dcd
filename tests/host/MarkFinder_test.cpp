#include "host/MarkFinder.h"

#include <gtest/gtest.h>

#include <algorithm>
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
            ASSERT_EQ(CountLineFeeds(piece), std::count(piece.begin(), piece.end(), '\n')) << length;
        }
    }
}

TEST_P(MarkFinder, FindsAll_WhenEveryByteIsOne) {
    const std::string text(1000, '"');
    EXPECT_EQ(Find(text, ',').size(), text.size());
    EXPECT_EQ(Find(text, ','), FindByLooking(text, ','));
    EXPECT_EQ(CountLineFeeds(std::string(100'000, '\n')), 100'000U);
}

TEST_P(MarkFinder, FindsNone_WhenThereIsNone) {
    EXPECT_EQ(Find(std::string(1000, 'x'), ','), Positions{});
    EXPECT_EQ(Find("", ','), Positions{});
    EXPECT_EQ(CountLineFeeds(std::string(1000, 'x')), 0U);
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, MarkFinder, testing::ValuesIn(InstructionSets()), NameOfInstructionSet);

}  // namespace
}  // namespace nbscore::test

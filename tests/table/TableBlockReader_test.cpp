#include "table/TableBlockReader.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "output/HostError.h"
#include "support/DribblingBuffer.h"

namespace nbscore::test {
namespace {

struct ReadBlock {
    std::string text;
    std::uint64_t firstLine;

    bool operator==(const ReadBlock&) const = default;
};

/// All blocks of a text that comes in pieces of one size.
std::vector<ReadBlock> ReadBlocks(const std::string& text, std::size_t pieceSize) {
    DribblingBuffer buffer(text, pieceSize);
    std::istream input(&buffer);
    TableBlockReader reader(input, "t.csv", ',');
    TableBlock block;
    std::vector<ReadBlock> blocks;
    while (reader.Read(block))
        blocks.push_back({std::string(block.GetBytes()), block.firstLine});
    return blocks;
}

using Blocks = std::vector<ReadBlock>;

TEST(TableBlockReader, ABlockIsWhatTheStreamHasReady_UpToTheLastWholeRow) {
    EXPECT_EQ(ReadBlocks("a\nb\nc", 100), (Blocks{{"a\nb\n", 1}, {"c", 3}}));
    EXPECT_EQ(ReadBlocks("a\nb\nc\n", 3), (Blocks{{"a\n", 1}, {"b\nc\n", 2}}));
    EXPECT_EQ(ReadBlocks("a\nb\nc\n", 1), (Blocks{{"a\n", 1}, {"b\n", 2}, {"c\n", 3}}));
    EXPECT_EQ(ReadBlocks("", 1), Blocks{});
}

std::vector<std::size_t> SizesOfBlocks(const std::string& text, std::size_t piece) {
    std::istringstream input(text);
    TableBlockReader reader(input, "t.csv", ',');
    reader.SetPieceBytes(piece);
    TableBlock block;
    std::vector<std::size_t> sizes;
    while (reader.Read(block))
        sizes.push_back(block.size);
    return sizes;
}

TEST(TableBlockReader, TakesNoMoreAtATimeThanItIsTold_WithinItsBounds) {
    constexpr std::size_t least = TableBlockReader::fewestPieceBytes;
    constexpr std::size_t most = TableBlockReader::pieceBytes;
    std::string text;
    while (text.size() < 2 * most)
        text += "abcdef\n\n";
    using Sizes = std::vector<std::size_t>;
    EXPECT_EQ(SizesOfBlocks(text, most), (Sizes{most, most}));
    EXPECT_EQ(SizesOfBlocks(text, 100 * most), (Sizes{most, most}));
    EXPECT_EQ(SizesOfBlocks(text, 2 * least), Sizes(most / least, 2 * least));
    EXPECT_EQ(SizesOfBlocks(text, 1), Sizes(2 * most / least, least));
}

TEST(TableBlockReader, ARowThatEndsInACarriageReturnIsGivenAtOnce_AndTheLineFeedBehindItPassedOver) {
    EXPECT_EQ(ReadBlocks("a\rb\rc", 100), (Blocks{{"a\rb\r", 1}, {"c", 3}}));
    EXPECT_EQ(ReadBlocks("ab\r\nc\r\n", 3), (Blocks{{"ab\r", 1}, {"c\r", 2}}));
    EXPECT_EQ(ReadBlocks("ab\r\n\nc\r", 3), (Blocks{{"ab\r", 1}, {"\n", 2}, {"c\r", 3}}));
    EXPECT_EQ(ReadBlocks("ab\r\n", 3), (Blocks{{"ab\r", 1}}));
    EXPECT_EQ(ReadBlocks("\"a\r\n\"\r\nb", 3), (Blocks{{"\"a\r\n\"\r", 1}, {"b", 3}}));
}

TEST(TableBlockReader, CellsWithLineBreaksStayWhole_AndTheirLinesCount) {
    EXPECT_EQ(ReadBlocks("\"a\nb\"\nc\n", 3), (Blocks{{"\"a\nb\"\n", 1}, {"c\n", 3}}));
    EXPECT_EQ(ReadBlocks("h\n\"a\n\"\"\n\"\nc\n\"", 4), (Blocks{{"h\n", 1}, {"\"a\n\"\"\n\"\nc\n", 2}, {"\"", 6}}));
}

TEST(TableBlockReader, AByteOrderMarkIsPassedOver_WhereverItsPiecesEnd) {
    for (const std::size_t size : {1U, 2U, 3U, 4U}) {
        EXPECT_EQ(ReadBlocks("\xEF\xBB\xBF"
                             "a\n",
                             size),
                  (Blocks{{"a\n", 1}}))
            << size;
        EXPECT_EQ(ReadBlocks("\xEF\xBB", size), (Blocks{{"\xEF\xBB", 1}})) << size;
        EXPECT_EQ(ReadBlocks("\xEF\xBB\xBF", size), Blocks{}) << size;
    }
    EXPECT_EQ(ReadBlocks("a\n\xEF\xBB\xBF", 2), (Blocks{{"a\n", 1}, {"\xEF\xBB\xBF", 2}})) << "further on it is text";
}

TEST(TableBlockReader, TheBlockEndsWithTheFault_WhenAQuoteStandsWhereNoneMay) {
    EXPECT_EQ(ReadBlocks("a\nb\"\nc\n", 100).front(), (ReadBlock{"a\nb\"\nc\n", 1}));
    EXPECT_EQ(ReadBlocks("a\nb\"\nc\n", 4).front(), (ReadBlock{"a\nb\"", 1}));
}

TEST(TableBlockReader, ARowThatDoesNotEndIsGivenUp_AsSoonAsItIsTooLong) {
    std::istringstream input("a\n" +
                             std::string(TableBlockReader::maxRowBytes + 10 * TableBlockReader::pieceBytes, 'x'));
    TableBlockReader reader(input, "t.csv", ',');
    TableBlock block;
    ASSERT_TRUE(reader.Read(block));
    EXPECT_EQ(block.GetBytes(), "a\n");
    ASSERT_TRUE(reader.Read(block));
    EXPECT_GT(block.size, TableBlockReader::maxRowBytes);
    EXPECT_LE(block.size, TableBlockReader::maxRowBytes + TableBlockReader::pieceBytes);
}

TEST(TableBlockReader, ABlockThatHeldALongRowGivesItsMemoryBack) {
    std::istringstream input("\"" + std::string(16 * TableBlockReader::pieceBytes, 'x') + "\"\na\nb\n");
    TableBlockReader reader(input, "t.csv", ',');
    TableBlock block;
    ASSERT_TRUE(reader.Read(block));
    EXPECT_GT(block.room.capacity(), 16 * TableBlockReader::pieceBytes);
    ASSERT_FALSE(reader.Read(block));
    EXPECT_LT(block.room.capacity(), 4 * TableBlockReader::pieceBytes);
}

TEST(TableBlockReader, BytesAreCountedAsTheyAreTaken_WithTheMark) {
    DribblingBuffer buffer(
        "\xEF\xBB\xBF"
        "a\nb\nc",
        5);
    std::istream input(&buffer);
    TableBlockReader reader(input, "t.csv", ',');
    TableBlock block;
    EXPECT_EQ(reader.GetBytesRead(), 0U);
    ASSERT_TRUE(reader.Read(block));
    EXPECT_EQ(reader.GetBytesRead(), 5U);
    while (reader.Read(block)) {
    }
    EXPECT_EQ(reader.GetBytesRead(), 8U);
}

TEST(TableBlockReader, FailureOfTheStreamIsReported_AfterTheRowsBeforeIt) {
    class FailingBuffer : public DribblingBuffer {
    public:
        FailingBuffer() : DribblingBuffer("a\nb", 3) {}

    private:
        int_type underflow() override {
            if (isUsed) throw std::runtime_error("disk on fire");
            isUsed = true;
            return DribblingBuffer::underflow();
        }
        bool isUsed = false;
    } buffer;
    std::istream input(&buffer);
    TableBlockReader reader(input, "t.csv", ',');
    TableBlock block;
    // The first block needs three bytes to see that there is no byte order mark, and has them.
    ASSERT_TRUE(reader.Read(block));
    EXPECT_EQ(block.GetBytes(), "a\n");
    EXPECT_THROW(reader.Read(block), InputOutputError);
}

RC_GTEST_PROP(TableBlockReader, BlocksTogetherAreTheText_AndEndWhereRowsEnd, ()) {
    const auto cell = rc::gen::element<std::string>("a", "", "bc", "\"x\ny\"", "\"\"\"\"", "\"\r\n\n\"", "\"p,q\"");
    const auto row = rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::vector<std::string>>(cell)),
                                  [](const std::vector<std::string>& cells) {
                                      std::string text = cells.front();
                                      for (std::size_t i = 1; i < cells.size(); ++i)
                                          text += ',' + cells[i];
                                      return text;
                                  });
    const auto rows = *rc::gen::scale(0.2, rc::gen::container<std::vector<std::string>>(row));
    std::string text;
    // Where rows begin, and on which line.
    std::map<std::size_t, std::uint64_t> rowBegins = {{0, 1}};
    std::uint64_t line = 1;
    for (const std::string& rowText : rows) {
        // A row that is an empty cell must not look like the rest of the line end before it.
        text += (rowText.empty() ? "\"\"" : rowText) + *rc::gen::element<std::string>("\n", "\r\n", "\r");
        line += 1 + static_cast<std::uint64_t>(std::ranges::count(rowText, '\n'));
        rowBegins[text.size()] = line;
    }
    std::size_t position = 0;
    for (const ReadBlock& block : ReadBlocks(text, *rc::gen::inRange<std::size_t>(1, 40))) {
        const auto begun = rowBegins.find(position);
        RC_ASSERT(begun != rowBegins.end());
        RC_ASSERT(block.firstLine == begun->second);
        RC_ASSERT(text.compare(position, block.text.size(), block.text) == 0);
        position += block.text.size();
        if (block.text.ends_with('\r') && text.compare(position, 1, "\n") == 0) ++position;
    }
    RC_ASSERT(position == text.size());
}

}  // namespace
}  // namespace nbscore::test

#include "table/CsvReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/Utf8Check.h"
#include "output/HostError.h"
#include "support/Message.h"
#include "table/CsvText.h"
#include "table/PlainCsv.h"

namespace nbscore::test {
namespace {

using Row = std::vector<std::string>;

TableBlock MakeBlock(std::string_view text) {
    TableBlock block;
    block.room.assign(text.begin(), text.end());
    block.room.resize(text.size() + TableBlock::slack);
    block.size = text.size();
    return block;
}

/// The rows of a text, found by taking them apart and nothing else, up to the first that cannot be.
struct RowsOneByOne {
    std::vector<Row> rows;
    std::vector<std::uint64_t> lines;
    bool hasFault = false;
};

RowsOneByOne TakeApart(std::string_view text, char delimiter) {
    RowsOneByOne taken;
    std::uint64_t line = 1;
    for (std::size_t begin = 0; begin < text.size();) {
        const PlainRow row = ReadPlainRow(text.substr(begin), delimiter);
        const std::string_view rowText = text.substr(begin, row.size);
        taken.hasFault = row.HasFault() || CheckUtf8(rowText, 0, rowText.size()).verdict != Utf8Check::Verdict::Sound;
        if (taken.hasFault) return taken;
        taken.rows.push_back(row.cells);
        taken.lines.push_back(line);
        line += CountPlainLines(rowText);
        begin += rowText.size();
    }
    return taken;
}

std::string AsWriterWrites(std::span<const std::string_view> cells, char delimiter) {
    std::string text;
    CsvRow row(text, delimiter);
    for (const std::string_view cell : cells)
        row.Add(cell);
    return text;
}

/// Whether there is a next row; nothing when it has a fault.
std::optional<bool> TryToRead(CsvRowReader& reader) {
    try {
        return reader.ReadRow();
    } catch (const CaseDataError&) {
        return std::nullopt;
    }
}

rc::Gen<std::string> TextOfPieces(std::vector<std::string> pieces) {
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(std::move(pieces))),
                        [](const std::vector<std::string>& drawn) {
                            std::string text;
                            for (const std::string& piece : drawn)
                                text += piece;
                            return text;
                        });
}

void ExpectRowsAsTakenApart(const std::string& text, char delimiter) {
    const RowsOneByOne expected = TakeApart(text, delimiter);
    TableBlock block = MakeBlock(text);
    CsvRowReader reader("t.csv", delimiter);
    reader.Start(block);
    for (std::size_t i = 0; i < expected.rows.size(); ++i) {
        RC_ASSERT(TryToRead(reader) == true);
        const std::span<const std::string_view> cells = reader.GetCells();
        RC_ASSERT(Row(cells.begin(), cells.end()) == expected.rows[i]);
        RC_ASSERT(reader.GetRowLine() == expected.lines[i]);
        const InputRow row = reader.GetInputRow(true);
        if (!row.asWritten.empty()) RC_ASSERT(row.asWritten == AsWriterWrites(row.cells, delimiter));
    }
    RC_ASSERT(TryToRead(reader) == (expected.hasFault ? std::nullopt : std::optional(false)));
}

RC_GTEST_PROP(CsvRowReader, RowsAreWhatTakingThemApartGives_ForAnyBytes, ()) {
    const auto text = *TextOfPieces({"\"", ",", "\r", "\n", ";", "a", "\xEF", "\xBB", "\xBF", "\xEF\xBB\xBF"});
    ExpectRowsAsTakenApart(text, *rc::gen::element(',', ';'));
}

RC_GTEST_PROP(CsvRowReader, RowsAreWhatTakingThemApartGives_ForPlainAndQuotedRowsByTurns, ()) {
    const auto text = *TextOfPieces(
        {"a,b\n", "\"a\",b\r\n", "\"x\n\"\"y\",\n", "\n", "c;d,", "\xEF\xBB\xBF", "\r", "e\r\n", "f,g\r", "\"h\r\"\r"});
    ExpectRowsAsTakenApart(text, *rc::gen::element(',', ';'));
}

/// What a reader tells of the rows that it read one behind the other, up to the end or a fault.
struct RowsBehind {
    std::vector<std::string> asWritten;
    std::vector<std::uint64_t> lines;
    std::string fault;
    /// Of the rows up to the first one without two cells.
    std::vector<Row> cells;

    bool operator==(const RowsBehind&) const = default;
};

/// @param most how many rows are read at once; with 0 each by itself.
RowsBehind ReadRowsBehind(const std::string& text, std::size_t most) {
    RowsBehind read;
    TableBlock block = MakeBlock(text);
    CsvRowReader reader("t.csv", ',');
    reader.Start(block);
    std::vector<std::string_view> asWritten;
    std::size_t ofTwoCells = 0;
    bool areAllOfTwo = true;
    read.fault = [&] {
        try {
            for (;;) {
                const std::size_t count = reader.ReadPlainRowsBehind(most, 2, asWritten, read.lines);
                if (areAllOfTwo) ofTwoCells += count;
                if (count > 0) {
                    EXPECT_EQ(reader.GetRowLine(), read.lines.back());
                    EXPECT_EQ(reader.GetAsWritten(), asWritten.back());
                    continue;
                }
                if (!reader.ReadRowBehind()) return std::string();
                areAllOfTwo = areAllOfTwo && reader.CountCells() == 2;
                if (areAllOfTwo) ++ofTwoCells;
                asWritten.push_back(reader.GetAsWritten());
                read.lines.push_back(reader.GetRowLine());
            }
        } catch (const CaseDataError& error) {
            return std::string(error.what());
        }
    }();
    read.asWritten.assign(asWritten.begin(), asWritten.end());
    const CsvRows kept = reader.GetKeptRows(2);
    for (std::size_t i = 0; i < ofTwoCells; ++i)
        read.cells.push_back({std::string(kept.GetCell(i, 0)), std::string(kept.GetCell(i, 1))});
    return read;
}

RC_GTEST_PROP(CsvRowReader, RowsReadAtOnceAreThoseReadOneByOne, ()) {
    const auto begin = *TextOfPieces({"a,b\n", "c,\r\n", ",\r"});
    const auto end = *TextOfPieces(
        {"a,b\n", ",d\r\n", "\"x\",y\n", "e\n", "f,g,h\n", "\xEF\xBB\xBF,i\n", "\xFF,j\n", "\n", "k\"l,m\n", "n,o"});
    // Long enough that marks are found in several steps.
    std::string text;
    for (const std::size_t times = *rc::gen::element<std::size_t>(1, 100, 3000); text.size() < times * begin.size();)
        text += begin;
    text += end;
    RC_ASSERT(ReadRowsBehind(text, *rc::gen::element<std::size_t>(1, 2, 100, 100'000)) == ReadRowsBehind(text, 0));
}

TEST(CsvRowReader, PlainRowsAreKnownAsTheyAreWritten) {
    TableBlock block = MakeBlock("a,b\r\n\"c\",d\ne\rf,g\rh,i");
    CsvRowReader reader("t.csv", ',');
    reader.Start(block);
    std::vector<std::string> written;
    while (reader.ReadRow())
        written.emplace_back(reader.GetInputRow(true).asWritten);
    EXPECT_EQ(written, (std::vector<std::string>{"a,b", "", "e", "f,g", "h,i"}));
    EXPECT_TRUE(reader.GetInputRow(false).asWritten.empty());
}

/// Of rows of two cells.
std::vector<Row> ListKept(const CsvRowReader& reader, std::size_t count) {
    const CsvRows kept = reader.GetKeptRows(2);
    std::vector<Row> rows;
    for (std::size_t i = 0; i < count; ++i)
        rows.push_back({std::string(kept.GetCell(i, 0)), std::string(kept.GetCell(i, 1))});
    return rows;
}

TEST(CsvRowReader, KeepsTheCellsOfTheRowsBefore_WhenAskedTo) {
    TableBlock block = MakeBlock("a,b\r\n\"c,\",d\n,e\nf,g\n");
    CsvRowReader reader("t.csv", ',');
    reader.Start(block);
    ASSERT_TRUE(reader.ReadRow());
    ASSERT_TRUE(reader.ReadRowBehind());
    ASSERT_TRUE(reader.ReadRowBehind());
    EXPECT_THAT(reader.GetCells(), testing::ElementsAre("", "e"));
    EXPECT_EQ(ListKept(reader, 3), (std::vector<Row>{{"a", "b"}, {"c,", "d"}, {"", "e"}}));
    ASSERT_TRUE(reader.ReadRow());
    EXPECT_EQ(ListKept(reader, 1), (std::vector<Row>{{"f", "g"}}));
    EXPECT_FALSE(reader.ReadRowBehind());
    EXPECT_EQ(ListKept(reader, 1), (std::vector<Row>{{"f", "g"}}));
}

TEST(CsvRowReader, KeepsCellsWhole_WhenThereAreVeryMany) {
    std::string text;
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < 3002; ++i) {
        expected.push_back(std::to_string(i));
        text += expected.back() + (i % 7 == 6 ? '\n' : ',');
    }
    TableBlock block = MakeBlock(text + "last\n");
    expected.emplace_back("last");
    CsvRowReader reader("t.csv", ',');
    reader.Start(block);
    while (reader.ReadRowBehind()) {
    }
    const CsvRows kept = reader.GetKeptRows(7);
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < expected.size(); ++i)
        cells.emplace_back(kept.GetCell(i / 7, i % 7));
    EXPECT_EQ(cells, expected);
}

TEST(CsvRowReader, NothingOfABlockIsLeft_WhenTheNextOneStarts) {
    CsvRowReader reader("t.csv", ',');
    TableBlock first = MakeBlock("a,b\nc,d\n");
    reader.Start(first);
    ASSERT_TRUE(reader.ReadRow());
    TableBlock second = MakeBlock("e\n");
    second.firstLine = 7;
    reader.Start(second);
    ASSERT_TRUE(reader.ReadRow());
    EXPECT_THAT(reader.GetCells(), testing::ElementsAre("e"));
    EXPECT_EQ(reader.GetKeptRows(1).GetCell(0, 0), "e");
    EXPECT_EQ(reader.GetRowLine(), 7U);
    EXPECT_FALSE(reader.ReadRow());
}

/// The last row of a block, whose line end may lack.
std::string ReadRowOfEmptyCells(std::size_t cells, const std::string& lineEnd) {
    TableBlock block = MakeBlock(std::string(cells - 1, ',') + lineEnd);
    CsvRowReader reader("t.csv", ',');
    reader.Start(block);
    try {
        return reader.ReadRow() ? std::to_string(reader.GetCells().size()) : "no row";
    } catch (const CaseDataError& error) {
        return error.what();
    }
}

TEST(CsvRowReader, ARowMayHaveAMillionCellsAndNoMore_HoweverItEnds) {
    for (const std::string lineEnd : {"\n", "\r\n", "\r", ""}) {
        EXPECT_EQ(ReadRowOfEmptyCells(CsvRowReader::maxCells, lineEnd), "1000000");
        EXPECT_EQ(ReadRowOfEmptyCells(CsvRowReader::maxCells + 1, lineEnd),
                  "t.csv:1: the row has more than 1000000 cells");
    }
}

}  // namespace
}  // namespace nbscore::test

#include "table/CsvScanner.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "batch/InstructionSets.h"
#include "table/PlainCsv.h"

namespace nbscore::test {
namespace {

using Fault = CsvScanner::Fault;
using Positions = std::vector<std::uint32_t>;

/// What a text holds: found row by row and byte by byte, or by a scanner.
struct Scanned {
    Positions marks;
    /// Which of the marks end rows.
    Positions rowEnds;
    Fault fault = Fault::None;
    std::size_t position = 0;
    bool isInQuotes = false;

    bool operator==(const Scanned&) const = default;
};

Scanned ScanByLooking(std::string_view text, char delimiter) {
    Scanned scanned;
    while (scanned.position < text.size()) {
        const PlainRow row = ReadPlainRow(text.substr(scanned.position), delimiter);
        for (const std::size_t end : row.cellEnds) {
            const std::size_t place = scanned.position + end;
            if (place < text.size()) scanned.marks.push_back(static_cast<std::uint32_t>(place));
        }
        if (row.end == PlainRow::End::LineEnd) {
            scanned.rowEnds.push_back(static_cast<std::uint32_t>(scanned.marks.size() - 1));
        }
        scanned.position += row.size;
        if (row.end == PlainRow::End::StrayQuote) scanned.fault = Fault::StrayQuote;
        if (row.end == PlainRow::End::TextBehindQuote) scanned.fault = Fault::TextBehindQuote;
        scanned.isInQuotes = row.end == PlainRow::End::OpenQuote;
        if (row.HasFault()) break;
    }
    return scanned;
}

Scanned ScanAll(std::string_view text, char delimiter) {
    CsvScanner scanner(delimiter);
    Scanned scanned;
    Positions room(CsvScanner::roomForMarks);
    Positions rowEnds(CsvScanner::roomForMarks);
    while (scanner.GetPosition() < text.size() && scanner.GetFault() == Fault::None) {
        const CsvScanner::Found found = scanner.FindMarks(text, room.data(), rowEnds.data());
        const auto end = room.begin() + static_cast<std::ptrdiff_t>(found.marks);
        for (std::size_t i = 0; i < found.rowEnds; ++i)
            scanned.rowEnds.push_back(static_cast<std::uint32_t>(scanned.marks.size()) + rowEnds[i]);
        scanned.marks.insert(scanned.marks.end(), room.begin(), end);
    }
    scanned.fault = scanner.GetFault();
    scanned.position = scanner.GetPosition();
    scanned.isInQuotes = scanner.IsInQuotes();
    return scanned;
}

/// Where the last whole row ends, found row by row; a text with a fault has none.
std::size_t FindRowEndByLooking(std::string_view text, char delimiter) {
    std::size_t end = 0;
    while (end < text.size()) {
        const PlainRow row = ReadPlainRow(text.substr(end), delimiter);
        if (row.end != PlainRow::End::LineEnd) break;
        end += row.size;
    }
    return end;
}

std::size_t FindRowEnd(std::string_view text, char delimiter = ',') {
    CsvScanner scanner(delimiter);
    scanner.FindRowEnds(text);
    return scanner.GetRowEnd();
}

bool FindsFault(std::string_view text) {
    CsvScanner scanner(',');
    scanner.FindRowEnds(text);
    return scanner.GetFault() != Fault::None;
}

/// Pieces of all that has a meaning, with plain text of any length between them.
std::string DrawText(std::mt19937& random, std::size_t mostPieces, bool isSound) {
    static const std::vector<std::string> sound = {
        ",", ";", "\n", "\r", "\r\n", "a", "\"b\"", "\"\"", "\"\"\"\"", "\"c\r\nd,\"", "\"\n\r\"", "\"e\"\"\nf\"\"\""};
    static const std::vector<std::string> any = {"\"", "\"", ",", ";", "\n", "\r", "a", "\xC3"};
    std::string text;
    for (std::size_t left = random() % (mostPieces + 1); left > 0; --left) {
        if (isSound && !text.empty() && text.back() != '\n' && text.back() != '\r') text += ',';
        if (isSound) {
            const std::string& piece = sound[random() % sound.size()];
            if (piece.front() != '"' || text.empty() || text.back() == ',' || text.back() == '\n') text += piece;
        } else {
            text += any[random() % any.size()];
        }
        if (random() % 8 == 0) text += std::string(random() % 90, 'x');
        if (isSound && random() % 8 == 0) text += '\n';
    }
    return text;
}

class CsvScannerOnEach : public WithInstructionSet {};

TEST_P(CsvScannerOnEach, MarksWhatEndsCells_AsReadingByteByByteDoes) {
    std::mt19937 random(4180);
    for (int i = 0; i < 5000; ++i) {
        const std::string text = DrawText(random, 60, i % 2 == 0);
        const char delimiter = ",;a"[i % 3];
        ASSERT_EQ(ScanAll(text, delimiter), ScanByLooking(text, delimiter)) << text;
    }
}

TEST_P(CsvScannerOnEach, MarksWhatEndsCells_WhereverTheyStandInALongText) {
    for (const std::string piece : {",", "\n", "\r", "\r\n", "\"\"\"\"\n", ",\"\n\"\r", "\"x", "x\"", ",\"\"x"}) {
        for (std::size_t before = 0; before < 200; ++before) {
            const std::string text = std::string(before, 'x') + "\n" + piece + std::string(70, 'x');
            ASSERT_EQ(ScanAll(text, ','), ScanByLooking(text, ',')) << text;
            const std::string marksOnly = std::string(before, ',') + piece;
            ASSERT_EQ(ScanAll(marksOnly, ','), ScanByLooking(marksOnly, ',')) << marksOnly;
        }
    }
}

TEST_P(CsvScannerOnEach, MarksWhatEndsCells_AcrossTheBordersOfWhatIsLookedAtAtOnce) {
    for (const std::string piece :
         {"\r\n\"a\"\"\n\",b\n", "\"\"\"\"\"\"\r\n", "\n\"\r\n\r\n\"\r\n", "\n\"", "\n\"\"x"}) {
        for (std::size_t before = 0; before < 2 * piece.size(); ++before) {
            const std::string text = std::string(CsvScanner::bytesAtOnce - before, ',') + piece;
            ASSERT_EQ(ScanAll(text, ','), ScanByLooking(text, ',')) << piece << before;
        }
    }
}

TEST_P(CsvScannerOnEach, FindsTheLastRowEndAndAllLineEnds_WhereverThePiecesEnd) {
    std::mt19937 random(4181);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = DrawText(random, 40, i % 2 == 0);
        const char delimiter = ",;"[i % 2];
        CsvScanner scanner(delimiter);
        for (std::size_t size = 0;; size = std::min(text.size(), size + 1 + random() % 80)) {
            const std::string_view bytes = std::string_view(text).substr(0, size);
            scanner.FindRowEnds(bytes);
            // Behind a fault, the only promise is that the reader of the rows meets it.
            if (ScanByLooking(bytes, delimiter).fault != Fault::None) break;
            ASSERT_EQ(scanner.GetFault(), Fault::None);
            ASSERT_EQ(scanner.GetRowEnd(), FindRowEndByLooking(bytes, delimiter)) << bytes;
            ASSERT_EQ(scanner.GetLineEnds(), CountPlainLines(bytes)) << bytes;
            ASSERT_EQ(CountLineEnds(bytes), CountPlainLines(bytes)) << bytes;
            if (size == text.size()) break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, CsvScannerOnEach, testing::ValuesIn(InstructionSets()), NameOfInstructionSet);

TEST(CsvScanner, FindsTheLastRowThatIsWhole) {
    EXPECT_EQ(FindRowEnd(""), 0U);
    EXPECT_EQ(FindRowEnd("a,b"), 0U);
    EXPECT_EQ(FindRowEnd("a\nb"), 2U);
    EXPECT_EQ(FindRowEnd("a\r\nb\r\nc"), 6U);
    EXPECT_EQ(FindRowEnd("a\rb\rc"), 4U);
    EXPECT_EQ(FindRowEnd("a\r\"b\rc\"\r\"d\r"), 8U);
    EXPECT_EQ(FindRowEnd("a\n\"b\nc\nd"), 2U);
    EXPECT_EQ(FindRowEnd("a\n\"b\nc\"\n\"d\n"), 8U);
    EXPECT_EQ(FindRowEnd("a\n\"b\n\"\"\nc\nd"), 2U);
}

TEST(CsvScanner, ARowIsWholeWithItsCarriageReturn_AndHasTheLineFeedThatFollows) {
    CsvScanner scanner(',');
    scanner.FindRowEnds("a\r");
    EXPECT_EQ(scanner.GetRowEnd(), 2U);
    EXPECT_EQ(scanner.GetLineEnds(), 1U);
    scanner.FindRowEnds("a\r\n");
    EXPECT_EQ(scanner.GetRowEnd(), 3U);
    EXPECT_EQ(scanner.GetLineEnds(), 1U);
}

TEST(CsvScanner, NoRowEnds_WhereAQuoteMayCloseTheCellOrStandForItself) {
    CsvScanner scanner(',');
    scanner.FindRowEnds("\"a\"");
    EXPECT_EQ(scanner.GetRowEnd(), 0U);
    scanner.FindRowEnds("\"a\"\"\n");
    EXPECT_EQ(scanner.GetRowEnd(), 0U);
    scanner.FindRowEnds("\"a\"\"\n\"\n");
    EXPECT_EQ(scanner.GetRowEnd(), 7U);
}

TEST(CsvScanner, FindsAMisplacedQuote) {
    EXPECT_TRUE(FindsFault("a\"\n"));
    EXPECT_TRUE(FindsFault("a\n;\"b\"\n"));
    EXPECT_TRUE(FindsFault("a\rb\"\r"));
    EXPECT_FALSE(FindsFault("a\r\"b\"\n"));
    EXPECT_FALSE(FindsFault("\"a\",\"b\"\n\"c\""));
    EXPECT_EQ(FindRowEnd("a\nb\"\nc\n"), 2U) << "what stands behind the fault is not looked at";
}

TEST(CsvScanner, ForgetsTheTextBefore_WhenItStartsAgain) {
    CsvScanner scanner(',');
    scanner.FindRowEnds("a\nb\"");
    scanner.Start();
    EXPECT_EQ(scanner.GetFault(), Fault::None);
    EXPECT_EQ(scanner.GetRowEnd(), 0U);
    scanner.FindRowEnds("x\n\"");
    EXPECT_EQ(scanner.GetRowEnd(), 2U);
}

}  // namespace
}  // namespace nbscore::test

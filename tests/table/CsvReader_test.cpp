#include "table/CsvReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "output/HostError.h"
#include "support/DribblingBuffer.h"
#include "support/Message.h"

namespace nbscore::test {
namespace {

using Row = std::vector<std::string>;
using Table = std::vector<Row>;

Table ReadAll(std::istream& input, char delimiter = ',') {
    CsvReader reader(input, "t.csv", delimiter);
    Table table;
    std::vector<std::string_view> cells;
    while (reader.ReadRow(cells)) {
        table.emplace_back(cells.begin(), cells.end());
    }
    return table;
}

Table ReadText(const std::string& text, char delimiter = ',') {
    std::istringstream input(text);
    return ReadAll(input, delimiter);
}

/// Reads the text in pieces of every size, so that a piece ends at every byte of it.
template <typename Check>
void ForEveryPieceSize(const std::string& text, Check check) {
    for (std::size_t size = 1; size <= text.size() + 1; ++size) {
        SCOPED_TRACE("pieces of " + std::to_string(size) + " bytes");
        DribblingBuffer buffer(text, size);
        std::istream input(&buffer);
        check(input);
    }
}

struct GoodText {
    const char* name;
    std::string text;
    Table expected;
};

class CsvReaderGood : public testing::TestWithParam<GoodText> {};

TEST_P(CsvReaderGood, RowsAreTheSame_WhereverTheirPiecesEnd) {
    EXPECT_EQ(ReadText(GetParam().text), GetParam().expected);
    ForEveryPieceSize(GetParam().text, [](std::istream& input) { EXPECT_EQ(ReadAll(input), GetParam().expected); });
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CsvReaderGood,
    testing::Values(
        GoodText{"Empty", "", {}}, GoodText{"OnlyByteOrderMark", "\xEF\xBB\xBF", {}},
        GoodText{"OneLine", "a,b\n", {{"a", "b"}}}, GoodText{"NoLastLineEnd", "a,b\n1,2", {{"a", "b"}, {"1", "2"}}},
        GoodText{"CarriageReturns", "a,b\r\n1,2\r\n", {{"a", "b"}, {"1", "2"}}},
        GoodText{"MixedLineEnds", "a\r\nb\nc\r\n", {{"a"}, {"b"}, {"c"}}},
        GoodText{"EmptyCells", ",\n,,\n", {{"", ""}, {"", "", ""}}}, GoodText{"EmptyLastCell", "a,", {{"a", ""}}},
        GoodText{"EmptyLines", "a\n\n\r\nb\n", {{"a"}, {""}, {""}, {"b"}}},
        GoodText{"BlanksStay", " a , b \n", {{" a ", " b "}}}, GoodText{"Quoted", "\"a\",\"b,c\"\n", {{"a", "b,c"}}},
        GoodText{"QuotedAtTheEnd", "a,\"b\"", {{"a", "b"}}},
        GoodText{"QuotedEmpty", "\"\"\n\"\",x\n", {{""}, {"", "x"}}},
        GoodText{"QuotedEmptyAtTheEnd", "a\n\"\"", {{"a"}, {""}}},
        GoodText{"DoubledQuotes", "\"a\"\"b\",\"\"\"\",\"\"\"x\"\"\"\n", {{"a\"b", "\"", "\"x\""}}},
        GoodText{"LineBreaksInQuotes", "\"a\nb\r\nc\rd\",e\nf,g\n", {{"a\nb\r\nc\rd", "e"}, {"f", "g"}}},
        GoodText{"QuotedBeforeCarriageReturn", "\"a\"\r\n\"b\"\r\n", {{"a"}, {"b"}}},
        GoodText{"CarriageReturnsAlone", "a,b\r1,2\r3,\r", {{"a", "b"}, {"1", "2"}, {"3", ""}}},
        GoodText{"NoLastLineEndBehindCarriageReturns", "a\rb\rc", {{"a"}, {"b"}, {"c"}}},
        GoodText{"AllLineEndsMixed", "a\rb\nc\r\nd\r", {{"a"}, {"b"}, {"c"}, {"d"}}},
        GoodText{"CarriageReturnBeforeEachLineEnd", "a\r\r\nb\r\rc\n\r", {{"a"}, {""}, {"b"}, {""}, {"c"}, {""}}},
        GoodText{"QuotedBeforeCarriageReturnAlone", "\"b\"\rc,\"d\"\r", {{"b"}, {"c", "d"}}},
        GoodText{"QuotedBehindCarriageReturnAlone", "a\r\"b\r\"\"\n\"\r", {{"a"}, {"b\r\"\n"}}},
        GoodText{"ByteOrderMark", "\xEF\xBB\xBF\"a\",b\n", {{"a", "b"}}},
        GoodText{"ByteOrderMarkInside", "a\n\xEF\xBB\xBFx\n", {{"a"}, {"\xEF\xBB\xBFx"}}},
        GoodText{"AllLengthsOfCharacters",
                 "\x7F\xC2\x80,\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80,\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\n",
                 {{"\x7F\xC2\x80", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"}}}),
    [](const auto& tested) { return tested.param.name; });

struct BadText {
    const char* name;
    std::string text;
    std::string message;
};

class CsvReaderBad : public testing::TestWithParam<BadText> {};

TEST_P(CsvReaderBad, FaultIsTheSame_WhereverItsPiecesEnd) {
    ForEveryPieceSize(GetParam().text, [](std::istream& input) {
        EXPECT_EQ(GetMessageOf<CaseDataError>([&input] { ReadAll(input); }), GetParam().message);
    });
}

const std::string strayQuote = "a quote stands inside a cell that does not begin with one";
const std::string textBehind = "text follows the closing quote of a cell";
const std::string unclosed = "the quote that opens here is never closed";
const std::string nul = "a NUL byte stands in the text";
const std::string notUtf8 = "the text is not valid UTF-8";

INSTANTIATE_TEST_SUITE_P(
    Texts, CsvReaderBad,
    testing::Values(
        BadText{"StrayQuote", "a\nb\nc\"d\n", "t.csv:3: " + strayQuote},
        BadText{"QuoteBehindBlank", "a, \"b\"\n", "t.csv:1: " + strayQuote},
        BadText{"TextBehindQuote", "a\n\"b\nc\"d\n", "t.csv:3: " + textBehind},
        BadText{"OtherDelimiterBehindQuoteInTheHeader", "\"a\";\"b\"\n1;2\n",
                "t.csv:1: " + textBehind + "; the columns seem to stand between semicolons: try --delimiter \";\""},
        BadText{"TabBehindQuoteInTheHeader", "c,\"a\"\tb\n",
                "t.csv:1: " + textBehind + "; the columns seem to stand between tabs: try --delimiter tab"},
        BadText{"OtherDelimiterBehindQuoteInARow", "a;b\n\"a\";\"b\"\n", "t.csv:2: " + textBehind},
        BadText{"BlankBehindQuote", "\"b\" ,c\n", "t.csv:1: " + textBehind},
        BadText{"StrayQuoteBehindCarriageReturns", "a\rb\rc\"d\r", "t.csv:3: " + strayQuote},
        BadText{"StrayQuoteBehindMixedLineEnds", "a\r\nb\rc\nd\r\r\ne\"f", "t.csv:6: " + strayQuote},
        BadText{"TextBehindQuoteWithCarriageReturns", "a\r\n\"b\rc\r\nd\"e\r", "t.csv:4: " + textBehind},
        BadText{"UnclosedQuote", "a\n\"x\ny\",\"b\nc\nd\n", "t.csv:3: " + unclosed},
        BadText{"UnclosedQuoteAtOnce", "a\n\"", "t.csv:2: " + unclosed},
        BadText{"Nul", std::string("a\nb\n\"c\n\0\"\n", 10), "t.csv:4: " + nul},
        BadText{"NulAtOnce", std::string("\0", 1), "t.csv:1: " + nul},
        BadText{"NulBehindLongText", std::string("abcdefghijklmnop\nabcdefghijk\0mnop\n", 34), "t.csv:2: " + nul},
        BadText{"LoneContinuation", "a\n\x80\n", "t.csv:2: " + notUtf8},
        BadText{"OverlongTwo", "\xC0\xAF\n", "t.csv:1: " + notUtf8},
        BadText{"OverlongTwoHigh", "\xC1\xBF\n", "t.csv:1: " + notUtf8},
        BadText{"OverlongThree", "\xE0\x9F\xBF\n", "t.csv:1: " + notUtf8},
        BadText{"OverlongFour", "\xF0\x8F\xBF\xBF\n", "t.csv:1: " + notUtf8},
        BadText{"SurrogateLow", "\xED\xA0\x80\n", "t.csv:1: " + notUtf8},
        BadText{"SurrogateHigh", "\xED\xBF\xBF\n", "t.csv:1: " + notUtf8},
        BadText{"AboveTheLast", "\xF4\x90\x80\x80\n", "t.csv:1: " + notUtf8},
        BadText{"NoFirstByte", "\xF5\x80\x80\x80\n", "t.csv:1: " + notUtf8},
        BadText{"SixteenBits", "\xFF\xFEx\n", "t.csv:1: " + notUtf8},
        BadText{"CutByCell", "a,\xE2\x82,b\n", "t.csv:1: " + notUtf8},
        BadText{"CutByLineEnd", "a\n\xE2\x82\n", "t.csv:2: " + notUtf8},
        BadText{"CutByTheEnd", "a\n\xE2\x82", "t.csv:2: " + notUtf8},
        BadText{"CutInQuotes", "\"a\n\xF0\x9F\x98\"\n", "t.csv:2: " + notUtf8},
        BadText{"CutByteOrderMark", "\xEF\xBB", "t.csv:1: " + notUtf8},
        BadText{"FirstFaultOfTwo", "\"a\n\x80\nb\"c\n", "t.csv:2: " + notUtf8},
        BadText{"FirstFaultOfTwoQuotes", "a\"b\x80\n", "t.csv:1: " + strayQuote},
        BadText{"WrongTextInUnclosedQuote", "\"a\nb\n\x80\n", "t.csv:3: " + notUtf8}),
    [](const auto& tested) { return tested.param.name; });

TEST(CsvReader, RowsBeforeAFaultAreRead_WhenTheyShareItsBlock) {
    std::istringstream input("a\nb\nc\"\n");
    CsvReader reader(input, "t.csv", ',');
    std::vector<std::string_view> cells;
    EXPECT_TRUE(reader.ReadRow(cells));
    EXPECT_TRUE(reader.ReadRow(cells));
    EXPECT_EQ(cells, std::vector<std::string_view>{"b"});
    EXPECT_THROW(reader.ReadRow(cells), CaseDataError);
}

TEST(CsvReader, RowLineIsExact_WhenCellsHoldLineBreaks) {
    ForEveryPieceSize("h\n\"a\nb\r\nc\"\r\nd\n\ne\r\"f\rg\r\n\"\ri\r\nj", [](std::istream& input) {
        CsvReader reader(input, "t.csv", ',');
        std::vector<std::string_view> cells;
        std::vector<std::uint64_t> lines;
        while (reader.ReadRow(cells))
            lines.push_back(reader.GetRowLine());
        EXPECT_EQ(lines, (std::vector<std::uint64_t>{1, 2, 5, 6, 7, 8, 11, 12}));
    });
}

TEST(CsvReader, OtherCharactersAreText_WhenTheDelimiterIsAnother) {
    EXPECT_EQ(ReadText("a,b;\"c;d\"\n", ';'), (Table{{"a,b", "c;d"}}));
    EXPECT_EQ(ReadText("a b\tc\n", '\t'), (Table{{"a b", "c"}}));
}

TEST(CsvReader, IsRefused_WhenTheDelimiterIsNone) {
    for (const char delimiter : {'"', '\r', '\n', '\0', '\x80'}) {
        EXPECT_THROW(ReadText("a\n", delimiter), std::invalid_argument);
    }
}

TEST(CsvReader, BytesAreCounted_AsTheyAreTaken) {
    const std::string text = "\xEF\xBB\xBFx,b\n1,2\n";
    std::istringstream input(text);
    CsvReader reader(input, "t.csv", ',');
    std::vector<std::string_view> cells;
    while (reader.ReadRow(cells)) {
    }
    EXPECT_EQ(reader.GetBytesRead(), text.size());
}

TEST(CsvReader, LongRowsAreWhole_WhenTheyAreLongerThanABlock) {
    const std::string longText(300'000, 'x');
    const std::string quotedText = "\"" + longText + "\"\"" + longText + "\"";
    EXPECT_EQ(ReadText("a,b\n" + longText + "," + quotedText + "\nc,d\n"),
              (Table{{"a", "b"}, {longText, longText + "\"" + longText}, {"c", "d"}}));
}

TEST(CsvReader, ManyRowsAreWhole_WhereverBlocksEnd) {
    std::string text;
    for (int i = 0; i < 50'000; ++i) {
        text += std::to_string(i) + ",\"x\"\"" + std::to_string(i) + "\"\r\n";
    }
    const Table table = ReadText(text);
    ASSERT_EQ(table.size(), 50'000U);
    for (std::size_t i = 0; i < table.size(); ++i) {
        ASSERT_EQ(table[i], (Row{std::to_string(i), "x\"" + std::to_string(i)}));
    }
}

/// A text without end, so that only the reader's own bound ends the reading.
class EndlessBuffer : public std::streambuf {
public:
    explicit EndlessBuffer(char filling) : block(1 << 16, filling) {}

protected:
    int_type underflow() override {
        setg(block.data(), block.data(), block.data() + block.size());
        return traits_type::to_int_type(block.front());
    }

private:
    std::string block;
};

TEST(CsvReader, RowIsRefused_WhenItDoesNotEnd) {
    EndlessBuffer buffer('x');
    std::istream input(&buffer);
    EXPECT_EQ(GetMessageOf<CaseDataError>([&input] { ReadAll(input); }),
              "t.csv:1: the row is longer than 67108864 bytes");
}

TEST(CsvReader, RowIsRefusedWithItsQuote_WhenAnOpenQuoteSwallowsEverything) {
    const std::string text = "a\n\"b\",\"c\n" + std::string(CsvReader::maxRowBytes, 'x');
    std::istringstream input(text);
    EXPECT_EQ(GetMessageOf<CaseDataError>([&input] { ReadAll(input); }),
              "t.csv:2: the row is longer than 67108864 bytes (a quote opened in line 2 and was not closed so far)");
}

TEST(CsvReader, RowIsRefused_WhenItHasTooManyCells) {
    EndlessBuffer buffer(',');
    std::istream input(&buffer);
    EXPECT_EQ(GetMessageOf<CaseDataError>([&input] { ReadAll(input); }),
              "t.csv:1: the row has more than 1000000 cells");
}

TEST(CsvReader, FailureIsReported_WhenTheStreamBreaks) {
    class BrokenBuffer : public std::streambuf {
        int_type underflow() override { throw std::runtime_error("disk on fire"); }
    } buffer;
    std::istream input(&buffer);
    EXPECT_EQ(GetMessageOf<InputOutputError>([&input] { ReadAll(input); }), "t.csv: reading failed");
}

TEST(CsvReader, FailureIsReported_WhenTheStreamNeverOpened) {
    std::istringstream input("a\n");
    input.setstate(std::ios::failbit);
    EXPECT_THROW(ReadAll(input), InputOutputError);
}

TEST(CsvReader, EverythingIsRead_WhenTheStreamHasNoBuffer) {
    /// Gives one character a time and never says that any is ready.
    class UnbufferedBuffer : public std::streambuf {
        std::string text = "a,b\n\"c\nd\",e";
        std::size_t next = 0;
        int_type underflow() override {
            return next < text.size() ? traits_type::to_int_type(text[next]) : traits_type::eof();
        }
        int_type uflow() override {
            return next < text.size() ? traits_type::to_int_type(text[next++]) : traits_type::eof();
        }
    } buffer;
    std::istream input(&buffer);
    EXPECT_EQ(ReadAll(input), (Table{{"a", "b"}, {"c\nd", "e"}}));
}

}  // namespace
}  // namespace nbscore::test

#include "table/CsvText.h"

#include <gtest/gtest.h>

namespace nbscore::test {
namespace {

std::string WriteCell(std::string_view cell, char delimiter = ',') {
    std::string text;
    AppendCsvCell(text, cell, delimiter);
    return text;
}

TEST(CsvText, CellStandsAsItIs_WhenNothingInItMeansAnything) {
    EXPECT_EQ(WriteCell(""), "");
    EXPECT_EQ(WriteCell(" a;b\t'c' "), " a;b\t'c' ");
}

TEST(CsvText, CellIsQuoted_WhenItHoldsDelimiterQuoteOrLineBreak) {
    EXPECT_EQ(WriteCell("a,b"), "\"a,b\"");
    EXPECT_EQ(WriteCell("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(WriteCell("\""), "\"\"\"\"");
    EXPECT_EQ(WriteCell("a\nb"), "\"a\nb\"");
    EXPECT_EQ(WriteCell("a\r"), "\"a\r\"");
    EXPECT_EQ(WriteCell("a;b", ';'), "\"a;b\"");
}

TEST(CsvText, CellIsQuoted_WhenItBeginsWithAByteOrderMark) {
    EXPECT_EQ(WriteCell("\xEF\xBB\xBFx"), "\"\xEF\xBB\xBFx\"");
}

TEST(CsvRow, OnlyCellIsTwoQuotes_WhenItIsEmpty) {
    std::string text = "h\n";
    CsvRow row(text, ',');
    row.Add("");
    row.End();
    EXPECT_EQ(text, "h\n\"\"\n");
}

TEST(CsvRow, EmptyCellsAreEmpty_WhenThereAreMore) {
    std::string text;
    CsvRow row(text, ',');
    row.Add("");
    row.Add("");
    row.End();
    EXPECT_EQ(text, ",\n");
}

}  // namespace
}  // namespace nbscore::test

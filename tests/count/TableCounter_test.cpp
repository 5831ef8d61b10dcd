#include "count/TableCounter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "output/HostError.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Counts = std::vector<std::uint64_t>;

TableTotals Count(const std::string& table, CountOptions options = {}) {
    if (options.target.empty()) options.target = "t";
    std::istringstream input(table);
    return CountTable(input, "table.csv", options, {});
}

std::string FaultIn(const std::string& table, const CountOptions& options = {}) {
    try {
        Count(table, options);
        return "none";
    } catch (const CaseDataError& error) {
        return error.what();
    }
}

TEST(CountTable, CountsValuesByCategory_BothAscending) {
    const TableTotals totals = Count("a,t\nred,yes\nblue,no\nred,yes\n,yes\nred,no\n");
    EXPECT_EQ(totals.rows, 5U);
    EXPECT_THAT(totals.categories, ElementsAre(CountedCategory{"", "no"}, CountedCategory{"", "yes"}));
    EXPECT_THAT(totals.countsOfCategories, ElementsAre(2, 3));
    ASSERT_THAT(totals.columns, SizeIs(1));
    EXPECT_THAT(totals.columns[0].texts, ElementsAre("blue", "red"));
    EXPECT_THAT(totals.columns[0].counts, ElementsAre(Counts{1, 0}, Counts{1, 2}));
    EXPECT_THAT(totals.columns[0].missing, ElementsAre(0, 1));
}

TEST(CountTable, TakesNumbersAsNumbers_HoweverTheyAreWritten) {
    const TableTotals totals = Count("a,t\n1,x\n1.0,y\n +2 ,x\n1e0,x\n");
    EXPECT_EQ(totals.columns[0].kind, ColumnTotals::Numbers);
    EXPECT_THAT(totals.columns[0].numbers, ElementsAre(1.0, 2.0));
    EXPECT_THAT(totals.columns[0].counts, ElementsAre(Counts{2, 1}, Counts{1, 0}));
    EXPECT_TRUE(totals.columns[0].areAllWhole);
}

TEST(CountTable, TakesNumbersAsTexts_WhenATextOrACodeStandsAmongThem) {
    EXPECT_THAT(Count("a,t\n1,x\n1.0,y\nnone,x\n").columns[0].texts, ElementsAre("1", "1.0", "none"));
    EXPECT_THAT(Count("a,t\n10115,x\n01234,y\n").columns[0].texts, ElementsAre("01234", "10115"));
    EXPECT_EQ(Count("a,t\n0,x\n0.5,y\n-0,x\n").columns[0].kind, ColumnTotals::Numbers);
}

TEST(CountTable, TellsWholeNumbersApart_ThatNoDoubleTellsApart) {
    const TableTotals totals = Count("a,t\n9007199254740993,x\n9007199254740992,y\n9007199254740992,x\n");
    EXPECT_EQ(totals.columns[0].kind, ColumnTotals::Texts);
    EXPECT_THAT(totals.columns[0].texts, ElementsAre("9007199254740992", "9007199254740993"));
    EXPECT_THAT(totals.columns[0].counts, ElementsAre(Counts{1, 1}, Counts{1, 0}));
    EXPECT_FALSE(Count("a,t\n1e20,x\n2,y\n").columns[0].areAllWhole);
}

TEST(CountTable, NamesTheLineOfACharacterThatNoDocumentCanHold_OnAnyNumberOfThreads) {
    std::string table = "a,t\n";
    for (int i = 0; i < 100000; ++i)
        table += "word" + std::to_string(i % 500) + (i % 2 == 0 ? ",x\n" : ",y\n");
    table += "odd\x01,x\n";
    for (const std::size_t threads : {1U, 2U, 4U}) {
        CountOptions options;
        options.threads = threads;
        EXPECT_EQ(Count(table, options).columns[0].unwritable.line, 100002U) << threads;
    }
}

TEST(CountTable, LeavesRowsOutThatHaveNoCategory) {
    const TableTotals totals = Count("a,t\nred,\nblue,no\n");
    EXPECT_EQ(totals.withoutTarget.rows, 1U);
    EXPECT_EQ(totals.withoutTarget.firstLine, 2U);
    EXPECT_THAT(totals.columns[0].texts, ElementsAre("blue"));
}

TEST(CountTable, CountsInBins_WithTheCutpointInTheBinBelow) {
    CountOptions options;
    options.known = {{"a", ColumnKind::Bins, {10.0, 20.0}}};
    const TableTotals totals = Count("a,t\n10,x\n10.5,x\n20,y\n21,x\n-3,x\n,y\n", options);
    EXPECT_THAT(totals.columns[0].counts, ElementsAre(Counts{2, 0}, Counts{1, 1}, Counts{1, 0}));
    EXPECT_THAT(totals.columns[0].missing, ElementsAre(0, 1));
}

TEST(CountTable, CountsUnderSubModelAndCategory_WhenThereIsAColumnOfSubModels) {
    CountOptions options;
    options.subModelsBy = "offer";
    const TableTotals totals = Count("a,offer,t\n1,card,no\n2,card,yes\n1,bond,no\n1,,no\n", options);
    EXPECT_THAT(totals.categories, ElementsAre(CountedCategory{"bond", "no"}, CountedCategory{"card", "no"},
                                               CountedCategory{"card", "yes"}));
    EXPECT_EQ(totals.withoutSubModel.firstLine, 5U);
    EXPECT_THAT(totals.columns, SizeIs(1));
}

TEST(CountTable, CountsTheColumnsThatAreAskedFor) {
    const std::string table = "a,b,t,c\n1,2,x,3\n";
    const auto namesOf = [&table](const CountOptions& options) {
        std::vector<std::string> names;
        for (const ColumnTotals& column : Count(table, options).columns)
            names.push_back(column.name);
        return names;
    };
    CountOptions options;
    EXPECT_THAT(namesOf(options), ElementsAre("a", "b", "c"));
    options.ignored = {"b"};
    EXPECT_THAT(namesOf(options), ElementsAre("a", "c"));
    options.inputs = {{{"c"}, {"b"}}};
    EXPECT_THAT(namesOf(options), ElementsAre("c"));
}

TEST(CountTable, NamesTheLine_OfTheFirstFaultOfSeveral) {
    CountOptions options;
    options.known = {{"a", ColumnKind::Bins, {1.0}}, {"b", ColumnKind::Bins, {1.0}}};
    EXPECT_EQ(FaultIn("a,b,t\n1,2,x\n1,z,y\nw,1,x\n", options), "table.csv:3: column \"b\": \"z\" is no number");
    EXPECT_EQ(FaultIn("a,b,t\n1,2,x\n1,z,y\n1,1\n", options), "table.csv:3: column \"b\": \"z\" is no number");
    EXPECT_EQ(FaultIn("a,b,t\n1,2,x\n1,1\nz,1,y\n", options), "table.csv:3: the row has 2 cells, the header has 3");
    EXPECT_EQ(FaultIn("a,t\n1,x\n1,\"y\n", options), "table.csv:1: the header lacks the column \"b\"");
    EXPECT_EQ(FaultIn("a,t\n1,x\n1,\"y\n"), "table.csv:3: the quote that opens here is never closed");
    EXPECT_EQ(FaultIn("a,a,t\n"), "table.csv:1: the header has two columns named \"a\"");
    EXPECT_EQ(FaultIn("a,t\n"), "table.csv: the table has a header and no cases");
    EXPECT_EQ(FaultIn(""), "table.csv: the table is empty: it has no header");
    EXPECT_THAT(FaultIn("a,t\n1,\x01\n"), HasSubstr("table.csv:2: "));
    EXPECT_EQ(FaultIn("a\x01,t\n1,x\n"),
              "table.csv:1: the name \"a?\" of a column holds a character that no document can hold");
}

/// A table with a column of each kind, in an order of its own.
std::string MakeTable(std::size_t rows, unsigned seed) {
    std::mt19937 engine(17);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < rows; ++i) {
        const auto draw = [&engine](unsigned below) { return engine() % below; };
        const std::string number = std::to_string(draw(1'000'000)) + "." + std::to_string(draw(1000));
        const std::string mixed = i == 777 ? "text" : std::to_string(draw(1'000'000));
        lines.push_back("v" + std::to_string(draw(50)) + "," + number + "," + mixed + ",w" + std::to_string(i) + "," +
                        std::to_string(draw(100)) + "," + (draw(10) == 0 ? "" : "c" + std::to_string(draw(3))) + "\n");
    }
    std::mt19937 order(seed);
    std::shuffle(lines.begin(), lines.end(), order);
    std::string table = "text,number,mixed,many,whole,t\n";
    for (const std::string& line : lines)
        table += line;
    return table;
}

TEST(CountTable, GivesTheSame_ForAnyOrderOfRowsAndAnyNumberOfThreads) {
    constexpr std::size_t rows = 60'000;
    CountOptions options;
    options.countsOfColumn = 3000;
    const TableTotals expected = Count(MakeTable(rows, 1), options);
    ASSERT_THAT(expected.columns, SizeIs(5));
    EXPECT_EQ(expected.columns[0].kind, ColumnTotals::Texts);
    EXPECT_EQ(expected.columns[1].kind, ColumnTotals::Numbers);
    EXPECT_GT(expected.columns[1].droppedBits, 0U);
    EXPECT_LE(expected.columns[1].numbers.size(), 1000U);
    EXPECT_EQ(expected.columns[2].kind, ColumnTotals::TooMany);
    EXPECT_EQ(expected.columns[3].kind, ColumnTotals::TooMany);
    EXPECT_EQ(expected.columns[4].droppedBits, 0U);
    for (const unsigned seed : {2U, 3U}) {
        options.threads = seed;
        const TableTotals totals = Count(MakeTable(rows, seed), options);
        EXPECT_EQ(totals.categories, expected.categories);
        EXPECT_EQ(totals.countsOfCategories, expected.countsOfCategories);
        for (std::size_t i = 0; i < totals.columns.size(); ++i) {
            EXPECT_EQ(totals.columns[i].kind, expected.columns[i].kind);
            EXPECT_EQ(totals.columns[i].texts, expected.columns[i].texts);
            EXPECT_EQ(totals.columns[i].numbers, expected.columns[i].numbers);
            EXPECT_EQ(totals.columns[i].counts, expected.columns[i].counts);
            EXPECT_EQ(totals.columns[i].missing, expected.columns[i].missing);
            EXPECT_EQ(totals.columns[i].distinct, expected.columns[i].distinct);
        }
    }
}

TEST(CountTable, RoundsNumbers_WhenThereAreAFewMoreThanAskedFor) {
    CountOptions options;
    options.countsOfColumn = 200;
    std::string table = "a,t\n";
    for (int i = 1; i <= 150; ++i)
        table += std::to_string(i) + ".5," + (i % 2 == 0 ? "x\n" : "y\n");
    const ColumnTotals column = Count(table, options).columns[0];
    EXPECT_GT(column.droppedBits, 0U);
    EXPECT_LE(column.numbers.size(), 100U);
}

TEST(CountTable, CountsExactlyBetweenRoundedNumbers) {
    CountOptions options;
    options.countsOfColumn = 128;
    std::string table = "a,t\n";
    for (int i = 1; i <= 5000; ++i)
        table += std::to_string(i * 7) + (i % 3 == 0 ? ",x\n" : ",y\n");
    const ColumnTotals column = Count(table, options).columns[0];
    ASSERT_GT(column.droppedBits, 0U);
    std::uint64_t upTo = 0;
    for (std::size_t i = 0; i < column.numbers.size(); ++i) {
        upTo += column.counts[i][0] + column.counts[i][1];
        EXPECT_EQ(upTo, std::min<std::uint64_t>(5000, static_cast<std::uint64_t>(column.numbers[i] / 7.0)));
    }
}

}  // namespace
}  // namespace nbscore::test

#include "batch/ProbedTable.h"

#include <gtest/gtest.h>

#include <vector>

namespace nbscore {
namespace {

struct Entry {
    int key = 0;
    RowNumber row = unknownRow;
};

std::vector<Entry> Entries(int number) {
    std::vector<Entry> entries;
    for (int key = 0; key < number; ++key)
        entries.push_back({key, firstKnownRow + static_cast<RowNumber>(key)});
    return entries;
}

template <typename HashOf>
RowNumber Find(const ProbedTable<Entry>& table, const HashOf& hashOf, int key) {
    return table.Find(hashOf(Entry{key, 0}, table.GetSeed()), [key](const Entry& entry) { return entry.key == key; });
}

TEST(ProbedTable, FindsAllEntries_WhenEveryHashIsTheSame) {
    const auto same = [](const Entry&, std::uint64_t) { return std::uint64_t{7}; };
    std::vector<Entry> entries = Entries(300);
    const ProbedTable<Entry> table(entries, same);
    for (int key = 0; key < 300; ++key)
        EXPECT_EQ(Find(table, same, key), firstKnownRow + static_cast<RowNumber>(key));
    EXPECT_EQ(Find(table, same, 300), unknownRow);
}

TEST(ProbedTable, WrapsAroundItsEnd) {
    const auto last = [](const Entry&, std::uint64_t) { return ~std::uint64_t{0}; };
    std::vector<Entry> entries = Entries(3);
    const ProbedTable<Entry> table(entries, last);
    for (int key = 0; key < 3; ++key)
        EXPECT_EQ(Find(table, last, key), firstKnownRow + static_cast<RowNumber>(key));
    EXPECT_EQ(Find(table, last, 3), unknownRow);
}

TEST(ProbedTable, TakesAnotherSeed_WhenEntriesFallTogether) {
    const auto scatteredBySecondSeed = [](const Entry& entry, std::uint64_t seed) {
        return seed == 0 ? std::uint64_t{0} : static_cast<std::uint64_t>(entry.key);
    };
    std::vector<Entry> entries = Entries(300);
    const ProbedTable<Entry> table(entries, scatteredBySecondSeed);
    EXPECT_EQ(table.GetSeed(), 1u);
    EXPECT_EQ(Find(table, scatteredBySecondSeed, 299), firstKnownRow + 299u);
}

TEST(ProbedTable, KeepsTheFirstSeed_WhenFewFallTogether) {
    const auto same = [](const Entry&, std::uint64_t) { return std::uint64_t{0}; };
    std::vector<Entry> entries = Entries(40);
    EXPECT_EQ(ProbedTable<Entry>(entries, same).GetSeed(), 0u);
}

TEST(ProbedTable, FindsNothing_WhenNothingWasPutIn) {
    const auto same = [](const Entry&, std::uint64_t) { return std::uint64_t{0}; };
    std::vector<Entry> none;
    EXPECT_EQ(Find(ProbedTable<Entry>(none, same), same, 0), unknownRow);
}

}  // namespace
}  // namespace nbscore

#include "batch/ProbedTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "batch/NumberRows.h"

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

/// Far apart by their upper bits.
std::uint64_t Scattered(const Entry& entry) {
    return static_cast<std::uint64_t>(entry.key) << 54;
}

/// How many entries a look-up compares.
template <typename HashOf>
int CountComparisons(const ProbedTable<Entry>& table, const HashOf& hashOf, int key) {
    int comparisons = 0;
    table.Find(hashOf(Entry{key, 0}, table.GetSeed()), [&](const Entry& entry) {
        ++comparisons;
        return entry.key == key;
    });
    return comparisons;
}

TEST(ProbedTable, TakesAnotherSeed_WhenEntriesFallTogether) {
    const auto scatteredBySecondSeed = [](const Entry& entry, std::uint64_t seed) {
        return seed == 0 ? std::uint64_t{0} : Scattered(entry);
    };
    std::vector<Entry> entries = Entries(300);
    const ProbedTable<Entry> table(entries, scatteredBySecondSeed);
    EXPECT_EQ(table.GetSeed(), 1u);
    EXPECT_EQ(Find(table, scatteredBySecondSeed, 299), firstKnownRow + 299u);
}

TEST(ProbedTable, HasFewEntriesApart_WhereASeedBringsThatAbout) {
    const auto pairedUntilFifthSeed = [](const Entry& entry, std::uint64_t seed) {
        return Scattered(Entry{seed < 5 ? entry.key / 2 : entry.key, 0});
    };
    std::vector<Entry> entries = Entries(64);
    const ProbedTable<Entry> table(entries, pairedUntilFifthSeed);
    EXPECT_EQ(table.GetSeed(), 5u);
    for (int key = 0; key < 64; ++key) {
        EXPECT_EQ(Find(table, pairedUntilFifthSeed, key), firstKnownRow + static_cast<RowNumber>(key));
        EXPECT_EQ(CountComparisons(table, pairedUntilFifthSeed, key), 1);
    }
}

TEST(ProbedTable, KeepsTheFirstSeed_WhenSomeOfManyFallTogether) {
    const auto paired = [](const Entry& entry, std::uint64_t) { return Scattered(Entry{entry.key / 2 * 2, 0}); };
    std::vector<Entry> entries = Entries(300);
    EXPECT_EQ(ProbedTable<Entry>(entries, paired).GetSeed(), 0u);
}

/// Their bits are few and stand in the same places.
TEST(ProbedTable, ScattersNumbersOfFewDigits) {
    const auto hashOf = [](const Entry& entry, std::uint64_t seed) { return NumberRows::Hash(entry.key, seed); };
    const auto hashOfParts = [](const Entry& entry, std::uint64_t seed) {
        return NumberRows::Hash(entry.key / 128.0, seed);
    };
    for (const int number : {8, 32, 1000, 100'000}) {
        std::vector<Entry> entries = Entries(number);
        const ProbedTable<Entry> whole(entries, hashOf);
        const ProbedTable<Entry> parts(entries, hashOfParts);
        int comparisons = 0;
        for (int key = 0; key < number; ++key)
            comparisons += CountComparisons(whole, hashOf, key) + CountComparisons(parts, hashOfParts, key);
        EXPECT_LE(comparisons, 2 * 2 * number) << number;
    }
}

TEST(ProbedTable, FindsNothing_WhenNothingWasPutIn) {
    const auto same = [](const Entry&, std::uint64_t) { return std::uint64_t{0}; };
    std::vector<Entry> none;
    EXPECT_EQ(Find(ProbedTable<Entry>(none, same), same, 0), unknownRow);
}

}  // namespace
}  // namespace nbscore

#include "factors/ProbedTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include "framework/SeededHash.h"

namespace nbscore {
namespace {

struct Entry {
    int key = 0;
    FactorRow row = unknownRow;
};

std::vector<Entry> Entries(int number) {
    std::vector<Entry> entries;
    for (int key = 0; key < number; ++key)
        entries.push_back({key, firstKnownRow + static_cast<FactorRow>(key)});
    return entries;
}

template <typename HashOf>
FactorRow Find(const ProbedTable<Entry>& table, const HashOf& hashOf, int key) {
    return table.Find(hashOf(Entry{key, 0}, table.GetSeed()), [key](const Entry& entry) { return entry.key == key; });
}

TEST(ProbedTable, FindsAllEntries_WhenEveryHashIsTheSame) {
    const auto same = [](const Entry&, const HashSeed&) { return std::uint64_t{7}; };
    std::vector<Entry> entries = Entries(300);
    const ProbedTable<Entry> table(entries, same);
    for (int key = 0; key < 300; ++key)
        EXPECT_EQ(Find(table, same, key), firstKnownRow + static_cast<FactorRow>(key));
    EXPECT_EQ(Find(table, same, 300), unknownRow);
}

TEST(ProbedTable, WrapsAroundItsEnd) {
    const auto last = [](const Entry&, const HashSeed&) { return ~std::uint64_t{0}; };
    std::vector<Entry> entries = Entries(3);
    const ProbedTable<Entry> table(entries, last);
    for (int key = 0; key < 3; ++key)
        EXPECT_EQ(Find(table, last, key), firstKnownRow + static_cast<FactorRow>(key));
    EXPECT_EQ(Find(table, last, 3), unknownRow);
}

/// Far apart by their upper bits.
std::uint64_t Scattered(const Entry& entry) {
    return static_cast<std::uint64_t>(entry.key) << 55;
}

HashSeed SeedOfAttempt(std::uint64_t attempt) {
    return HashSeed::OfProcess().Derive(attempt);
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
    const auto scatteredBySecondSeed = [](const Entry& entry, const HashSeed& seed) {
        return seed == SeedOfAttempt(0) ? std::uint64_t{0} : Scattered(entry);
    };
    std::vector<Entry> entries = Entries(300);
    const ProbedTable<Entry> table(entries, scatteredBySecondSeed);
    EXPECT_EQ(table.GetSeed(), SeedOfAttempt(1));
    EXPECT_EQ(Find(table, scatteredBySecondSeed, 299), firstKnownRow + 299u);
}

TEST(ProbedTable, HasFewEntriesApart_WhereASeedBringsThatAbout) {
    const auto pairedUntilFifthSeed = [](const Entry& entry, const HashSeed& seed) {
        return Scattered(Entry{seed == SeedOfAttempt(5) ? entry.key : entry.key / 2, 0});
    };
    std::vector<Entry> entries = Entries(48);
    const ProbedTable<Entry> table(entries, pairedUntilFifthSeed);
    EXPECT_EQ(table.GetSeed(), SeedOfAttempt(5));
    for (int key = 0; key < 48; ++key) {
        EXPECT_EQ(Find(table, pairedUntilFifthSeed, key), firstKnownRow + static_cast<FactorRow>(key));
        EXPECT_EQ(CountComparisons(table, pairedUntilFifthSeed, key), 1);
    }
}

TEST(ProbedTable, KeepsTheFirstSeed_WhenSomeOfManyFallTogether) {
    const auto paired = [](const Entry& entry, const HashSeed&) { return Scattered(Entry{entry.key / 2 * 2, 0}); };
    std::vector<Entry> entries = Entries(300);
    EXPECT_EQ(ProbedTable<Entry>(entries, paired).GetSeed(), SeedOfAttempt(0));
}

/// Numbers as columns hold them, whose bits are few and stand in the same places.
std::vector<std::function<double(int)>> FamiliesOfNumbers() {
    return {[](int i) { return i; },          [](int i) { return i + 1; },        [](int i) { return 10.0 * i; },
            [](int i) { return i / 2.0; },    [](int i) { return i / 10.0; },     [](int i) { return 1980 + i; },
            [](int i) { return 1000.0 * i; }, [](int i) { return std::exp2(i); }, [](int i) { return -5.0 * i; }};
}

TEST(ProbedTable, HasFewNumbersApart) {
    for (const auto& family : FamiliesOfNumbers()) {
        const auto hashOf = [&](const Entry& entry, const HashSeed& seed) { return seed.Hash(family(entry.key)); };
        for (int number = 1; number <= 48; ++number) {
            std::vector<Entry> entries = Entries(number);
            const ProbedTable<Entry> table(entries, hashOf);
            for (int key = 0; key < number; ++key)
                ASSERT_EQ(CountComparisons(table, hashOf, key), 1) << number << " numbers with " << family(1);
        }
    }
}

TEST(ProbedTable, ScattersManyNumbers) {
    for (const auto& family : FamiliesOfNumbers()) {
        const auto hashOf = [&](const Entry& entry, const HashSeed& seed) { return seed.Hash(family(entry.key)); };
        // Powers of two are no more.
        const int number = std::isfinite(family(3000)) ? 3000 : 1000;
        std::vector<Entry> entries = Entries(number);
        const ProbedTable<Entry> table(entries, hashOf);
        int comparisons = 0;
        for (int key = 0; key < number; ++key)
            comparisons += CountComparisons(table, hashOf, key);
        EXPECT_LE(comparisons, 2 * number) << family(1);
    }
}

TEST(ProbedTable, FindsNothing_WhenNothingWasPutIn) {
    const auto same = [](const Entry&, const HashSeed&) { return std::uint64_t{0}; };
    std::vector<Entry> none;
    EXPECT_EQ(Find(ProbedTable<Entry>(none, same), same, 0), unknownRow);
}

}  // namespace
}  // namespace nbscore

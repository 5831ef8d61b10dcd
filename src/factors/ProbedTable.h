#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "factors/FactorRow.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// A hash table that is filled once and then only read. Entries lie where they are looked for, or right behind.
///
/// A few entries lie apart where one of the seeds brings that about: then a look-up is a single comparison, and the
/// processor has no number of steps to guess.
/// @tparam Entry has a member `FactorRow row`, which is unknownRow in a new one and in nothing that is put in.
template <typename Entry>
class ProbedTable {
public:
    /// @param entries no two are the same.
    /// @param hashOf the hash of an entry under a HashSeed, which it may note in the entry; its upper bits count.
    template <typename HashOf>
    ProbedTable(std::span<Entry> entries, const HashOf& hashOf)
        : slots(CountSlots(entries.size())), shift(64 - std::countr_zero(slots.size())) {
        const bool areFew = entries.size() <= fewEntries;
        for (std::uint64_t attempt = 0; attempt < numAttempts; ++attempt) {
            seed = HashSeed::OfProcess().Derive(attempt);
            if (Fill(entries, hashOf, areFew ? 0 : longestProbe)) {
                lieApart = areFew;
                return;
            }
        }
        Fill(entries, hashOf, entries.size());
    }

    /// The row of the entry that is the same; unknownRow when there is none.
    /// @param hash under GetSeed().
    template <typename IsSame>
    FactorRow Find(std::uint64_t hash, const IsSame& isSame) const {
        std::size_t slot = PlaceOf(hash);
        if (lieApart) return isSame(slots[slot]) ? slots[slot].row : unknownRow;
        for (;; slot = Next(slot)) {
            const Entry& entry = slots[slot];
            if (entry.row == unknownRow || isSame(entry)) return entry.row;
        }
    }
    const HashSeed& GetSeed() const { return seed; }

private:
    static constexpr std::size_t fewEntries = 48;
    /// Many millions of entries hardly ever take so many steps under a seed that was unknown when they were chosen.
    static constexpr std::size_t longestProbe = 128;
    static constexpr std::uint64_t numAttempts = 256;

    /// So many that one is always free.
    static std::size_t CountSlots(std::size_t entries) {
        return std::max<std::size_t>(std::bit_ceil((entries <= fewEntries ? 8 : 2) * entries), 2);
    }
    std::size_t PlaceOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> shift); }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (slots.size() - 1); }

    /// Gives up, and answers false, where an entry would lie further than so many slots behind the one where it is
    /// looked for.
    template <typename HashOf>
    bool Fill(std::span<Entry> entries, const HashOf& hashOf, std::size_t mostProbes) {
        slots.assign(slots.size(), Entry());
        for (Entry& entry : entries) {
            std::size_t slot = PlaceOf(hashOf(entry, seed));
            for (std::size_t probes = 0; slots[slot].row != unknownRow; slot = Next(slot)) {
                if (++probes > mostProbes) return false;
            }
            slots[slot] = entry;
        }
        return true;
    }

    /// A power of two of them.
    std::vector<Entry> slots;
    /// Leaves as many of a hash's upper bits as tell the slots apart.
    int shift;
    HashSeed seed = HashSeed::OfProcess();
    bool lieApart = false;
};

}  // namespace nbscore

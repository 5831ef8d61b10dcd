#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/RowNumber.h"

namespace nbscore {

/// A hash table that is filled once and then only read. Entries lie where they are looked for, or right behind.
/// @tparam Entry has a member `RowNumber row`, which is unknownRow in a new one and in nothing that is put in.
template <typename Entry>
class ProbedTable {
public:
    /// @param entries no two are the same.
    /// @param hashOf the hash of an entry under a seed, which it may note in the entry. Entries chosen to fall together
    ///     must not turn a look-up into a search: another seed scatters them anew.
    template <typename HashOf>
    ProbedTable(std::span<Entry> entries, const HashOf& hashOf) : mask(std::bit_ceil(2 * entries.size() + 2) - 1) {
        while (!Fill(entries, hashOf) && seed + 1 < numSeeds)
            ++seed;
    }

    /// The row of the entry that is the same; unknownRow when there is none.
    /// @param hash under GetSeed().
    template <typename IsSame>
    RowNumber Find(std::uint64_t hash, const IsSame& isSame) const {
        for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
            const Entry& entry = slots[slot];
            if (entry.row == unknownRow || isSame(entry)) return entry.row;
        }
    }
    std::uint64_t GetSeed() const { return seed; }

private:
    static constexpr std::size_t longestProbe = 64;
    static constexpr std::uint64_t numSeeds = 16;

    template <typename HashOf>
    bool Fill(std::span<Entry> entries, const HashOf& hashOf) {
        bool quick = true;
        slots.assign(mask + 1, Entry());
        for (Entry& entry : entries) {
            std::size_t slot = hashOf(entry, seed) & mask;
            std::size_t probes = 0;
            for (; slots[slot].row != unknownRow; slot = (slot + 1) & mask)
                ++probes;
            quick = quick && probes <= longestProbe;
            slots[slot] = entry;
        }
        return quick;
    }

    std::vector<Entry> slots;
    std::uint64_t seed = 0;
    std::size_t mask;
};

}  // namespace nbscore

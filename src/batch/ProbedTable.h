#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/RowNumber.h"

namespace nbscore {

/// A hash table that is filled once and then only read. Entries lie where they are looked for, or right behind.
///
/// A few entries lie apart where any of some seeds brings that about: then a look-up is a single comparison, which a
/// processor need not foresee. Of many no more than some follow each other.
/// @tparam Entry has a member `RowNumber row`, which is unknownRow in a new one and in nothing that is put in.
template <typename Entry>
class ProbedTable {
public:
    /// @param entries no two are the same.
    /// @param hashOf the hash of an entry under a seed, which it may note in the entry; its upper bits count. Entries
    ///     chosen to fall together must not turn a look-up into a search: another seed scatters them anew.
    template <typename HashOf>
    ProbedTable(std::span<Entry> entries, const HashOf& hashOf) : slots(CountSlots(entries.size())) {
        const std::size_t most = entries.size() <= fewEntries ? 0 : longestProbe;
        while (Fill(entries, hashOf) > most && seed + 1 < numSeeds)
            ++seed;
    }

    /// The row of the entry that is the same; unknownRow when there is none.
    /// @param hash under GetSeed().
    template <typename IsSame>
    RowNumber Find(std::uint64_t hash, const IsSame& isSame) const {
        std::size_t slot = PlaceOf(hash);
        if (lieApart) return isSame(slots[slot]) ? slots[slot].row : unknownRow;
        for (;; slot = Next(slot)) {
            const Entry& entry = slots[slot];
            if (entry.row == unknownRow || isSame(entry)) return entry.row;
        }
    }
    std::uint64_t GetSeed() const { return seed; }

private:
    static constexpr std::size_t fewEntries = 64;
    static constexpr std::size_t longestProbe = 64;
    static constexpr std::uint64_t numSeeds = 64;

    static std::size_t CountSlots(std::size_t entries) {
        return std::bit_ceil((entries <= fewEntries ? 8 : 2) * entries + 2);
    }
    std::size_t PlaceOf(std::uint64_t hash) const {
        return static_cast<std::size_t>(hash >> (64 - std::countr_zero(slots.size())));
    }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (slots.size() - 1); }

    /// The longest way from where an entry is looked for to where it lies.
    template <typename HashOf>
    std::size_t Fill(std::span<Entry> entries, const HashOf& hashOf) {
        std::size_t longest = 0;
        slots.assign(slots.size(), Entry());
        for (Entry& entry : entries) {
            std::size_t slot = PlaceOf(hashOf(entry, seed));
            std::size_t probes = 0;
            for (; slots[slot].row != unknownRow; slot = Next(slot))
                ++probes;
            longest = std::max(longest, probes);
            slots[slot] = entry;
        }
        lieApart = longest == 0;
        return longest;
    }

    /// A power of two of them.
    std::vector<Entry> slots;
    std::uint64_t seed = 0;
    bool lieApart = true;
};

}  // namespace nbscore

#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "factors/FactorRow.h"

/// @file
/// The factor rows of cells that a column had before: most columns hold few different ones. Texts are loaded whole and
/// cut to their length, which is several times faster than to load them alone: enough bytes must follow to read 16
/// (TableBlock). Used by one thread.

namespace nbscore {

/// What memories find in place of a row that they do not have.
inline constexpr FactorRow notKept = ~FactorRow{0};

/// Eight bytes as a number, the first one lowest.
inline std::uint64_t LoadEightBytes(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    if constexpr (std::endian::native == std::endian::big) {
        std::uint64_t turned = 0;
        for (unsigned i = 0; i < 8; ++i)
            turned |= (word >> 8 * i & 0xFF) << 8 * (7 - i);
        return turned;
    }
    return word;
}

/// Remembers the latest short texts. As long as they are few, each has a place of its own among few places, which
/// stay in the first cache.
class CellMemory {
public:
    CellMemory() : latest(fewestPlaces) {}

    /// Longer texts are not remembered.
    static constexpr std::size_t longestText = 15;

    /// The factor row that was kept for the text, if it is among the latest. Empty texts may be known to be missing
    /// values from the beginning.
    FactorRow Find(std::string_view text) const {
        if (const FactorRow row = FindLatest(text); row != notKept || text.size() > longestText || other.empty())
            return row;
        const Key key = KeyOf(text);
        const Entry& entry = other[PlaceOf(key)];
        return IsSame(entry.key, key) ? entry.row : notKept;
    }
    /// The same, faster, but finds only the later one of two texts of the same place.
    FactorRow FindLatest(std::string_view text) const {
        if (text.size() > longestText) return notKept;
        const Key key = KeyOf(text);
        const Entry& entry = latest.data()[PlaceOf(key)];
        return entry.row | (FactorRow{IsSame(entry.key, key)} - 1);
    }
    void Keep(std::string_view text, FactorRow row) {
        if (text.size() > longestText) return;
        Keep(Entry{KeyOf(text), row});
    }

private:
    static constexpr std::size_t fewestPlaces = 64;
    static constexpr std::size_t mostPlaces = 1024;
    static constexpr int triesToArrange = 16;

    /// The bytes of the text, zeros, and in the last byte its length. A new one is that of the empty text.
    struct Key {
        std::uint64_t front = 0;
        std::uint64_t back = 0;
    };
    struct Entry {
        Key key;
        FactorRow row = missingRow;
    };

    static bool IsSame(const Key& one, const Key& another) {
        return ((one.front ^ another.front) | (one.back ^ another.back)) == 0;
    }
    static Key KeyOf(std::string_view text) {
        static constexpr std::array<Key, longestText + 1> masks = [] {
            std::array<Key, longestText + 1> ofLengths;
            for (std::size_t length = 0; length <= longestText; ++length) {
                for (std::size_t i = 0; i < length; ++i)
                    (i < 8 ? ofLengths[length].front : ofLengths[length].back) |= std::uint64_t{0xFF} << 8 * (i % 8);
            }
            return ofLengths;
        }();
        const Key& mask = masks[text.size()];
        return {LoadEightBytes(text.data()) & mask.front,
                (LoadEightBytes(text.data() + 8) & mask.back) | std::uint64_t{text.size()} << 56};
    }
    std::size_t PlaceOf(const Key& key) const {
        return static_cast<std::size_t>(((key.front ^ std::rotl(key.back, 29)) * multiplier) >> shift);
    }

    void Keep(const Entry& entry) {
        if (Place(entry)) return;
        if (other.empty()) {
            Arrange(entry);
            return;
        }
        Entry& taken = latest[PlaceOf(entry.key)];
        other[PlaceOf(entry.key)] = taken;
        taken = entry;
    }
    /// False where another text has the place.
    bool Place(const Entry& entry) {
        Entry& place = latest[PlaceOf(entry.key)];
        if (!IsSame(place.key, Key()) && !IsSame(place.key, entry.key)) return false;
        place = entry;
        return true;
    }
    /// Gives each text a place of its own, the new one included, by another multiplier or among more places. Where
    /// there are too many texts for that, each has its place among the most, and shares it with the next one of that
    /// place: else two frequent ones could drive each other out for ever.
    void Arrange(const Entry& added) {
        std::vector<Entry> entries = {added};
        for (const Entry& entry : latest) {
            if (!IsSame(entry.key, Key())) entries.push_back(entry);
        }
        for (;; latest.resize(4 * latest.size()), shift -= 2) {
            const bool isLikely = entries.size() * entries.size() <= 4 * latest.size();
            for (int i = 0; i < triesToArrange && isLikely; ++i) {
                if (PlaceAll(entries)) return;
            }
            if (latest.size() == mostPlaces) break;
        }
        other.resize(mostPlaces);
        std::ranges::fill(latest, Entry());
        for (const Entry& entry : entries)
            Keep(entry);
    }
    bool PlaceAll(const std::vector<Entry>& entries) {
        multiplier = multiplier * 0x5851F42D4C957F2DU + 2;  // stays odd
        std::ranges::fill(latest, Entry());
        return std::ranges::all_of(entries, [this](const Entry& entry) { return Place(entry); });
    }

    std::vector<Entry> latest;
    /// Those that had the place before; none as long as each text has a place of its own.
    std::vector<Entry> other;
    std::uint64_t multiplier = 0x9E3779B97F4A7C15U;
    int shift = 64 - std::countr_zero(fewestPlaces);
};

/// Remembers the whole numbers from 0 up to a bound: a column of them may hold far more different ones.
class WholeNumberMemory {
public:
    static constexpr std::size_t bound = std::size_t{1} << 14;

    /// The number that the text holds; nothing where that is not so simple, or it is not below the bound.
    static std::optional<std::size_t> Read(std::string_view text) {
        if (text.size() - 1 >= mostDigits) return std::nullopt;  // an empty one, too
        // The digits go to the end of the word; in front of them stand zeros.
        const std::uint64_t digits = (LoadEightBytes(text.data()) ^ eachZero) << 8 * (8 - text.size());
        if (((digits + eachOver) | digits) & eachHighBit) return std::nullopt;
        const std::uint64_t pairs = (digits * (1 + (10 << 8)) >> 8) & 0x00FF00FF00FF00FF;
        const std::uint64_t fours = (pairs * (1 + (100 << 16)) >> 16) & 0x0000FFFF0000FFFF;
        const std::uint64_t number = fours * (1 + (std::uint64_t{10000} << 32)) >> 32;
        if (number >= bound) return std::nullopt;
        return static_cast<std::size_t>(number);
    }

    WholeNumberMemory() : rows(bound, noRow) {}

    /// The row that was kept for the number that the text holds, if any. An empty text is a missing value.
    FactorRow Find(std::string_view text) const {
        const std::optional<std::size_t> number = Read(text);
        if (!number) return text.empty() ? missingRow : notKept;
        const std::uint8_t row = rows.data()[*number];
        return row == noRow ? notKept : row;
    }
    /// Does nothing where the text is no such number, or the row is high.
    void Keep(std::string_view text, FactorRow row) {
        const std::optional<std::size_t> number = Read(text);
        if (number && row < noRow) rows[*number] = static_cast<std::uint8_t>(row);
    }

private:
    static constexpr std::size_t mostDigits = 8;
    static constexpr std::uint64_t eachZero = 0x3030303030303030;
    /// Added to a byte above 9 this reaches its highest bit.
    static constexpr std::uint64_t eachOver = 0x7676767676767676;
    static constexpr std::uint64_t eachHighBit = 0x8080808080808080;
    static constexpr std::uint8_t noRow = 0xFF;

    /// As small as can be, to stay in the first cache.
    std::vector<std::uint8_t> rows;
};

}  // namespace nbscore

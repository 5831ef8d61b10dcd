#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "factors/FactorRow.h"

/// @file
/// The factor rows of cells that a column had before: most columns hold few different ones. Texts are loaded whole and
/// cut to their length, which is several times faster than to load them alone: enough bytes must follow to read as many
/// as the longest text has (TableBlock). Used by one thread.

namespace nbscore {

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

/// Remembers the latest short texts.
class CellMemory {
public:
    CellMemory() : pairs(std::make_unique<std::array<Pair, numPairs>>()) {}

    /// Longer texts are not remembered.
    static constexpr std::size_t longestText = 16;

    /// The factor row that was kept for the text; nothing when it is not among the latest.
    /// @param text not empty, at most longestText long.
    std::optional<FactorRow> Find(std::string_view text) const {
        const Key key = KeyOf(text);
        const Pair& pair = (*pairs)[PlaceOf(key)];
        const bool isLatest = IsSame(pair.latest.key, key);
        const bool isOther = IsSame(pair.other.key, key);
        // Which of the two it is, chance decides: no branch could be predicted.
        const FactorRow row = isLatest ? pair.latest.row : pair.other.row;
        if (!static_cast<bool>(isLatest | isOther)) return std::nullopt;
        return row;
    }
    void Keep(std::string_view text, FactorRow row) {
        const Key key = KeyOf(text);
        Pair& pair = (*pairs)[PlaceOf(key)];
        pair.other = pair.latest;
        pair.latest = {key, row};
    }

private:
    static constexpr int bitsOfPlace = 10;
    static constexpr std::size_t numPairs = std::size_t{1} << bitsOfPlace;

    /// A new one is that of no text, because texts are not empty.
    struct Key {
        std::uint64_t front = 0;
        std::uint64_t back = 0;
        std::uint32_t length = 0;
    };
    struct Entry {
        Key key;
        FactorRow row = missingRow;
    };
    /// Two texts of the same place; else two frequent ones could drive each other out for ever.
    struct Pair {
        Entry latest;
        Entry other;
    };

    static bool IsSame(const Key& one, const Key& other) {
        return ((one.front ^ other.front) | (one.back ^ other.back) | (one.length ^ other.length)) == 0;
    }
    static Key KeyOf(std::string_view text) {
        static constexpr std::array<std::uint8_t, 2 * longestText> onesThenZeros = [] {
            std::array<std::uint8_t, 2 * longestText> bytes{};
            for (std::size_t i = 0; i < longestText; ++i)
                bytes[i] = 0xFF;
            return bytes;
        }();
        std::array<std::uint64_t, 2> words;
        std::array<std::uint64_t, 2> masks;
        std::memcpy(words.data(), text.data(), sizeof(words));
        std::memcpy(masks.data(), onesThenZeros.data() + longestText - text.size(), sizeof(masks));
        return {words[0] & masks[0], words[1] & masks[1], static_cast<std::uint32_t>(text.size())};
    }
    static std::size_t PlaceOf(const Key& key) {
        const std::uint64_t mixed = (key.front ^ std::rotl(key.back, 29)) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(mixed >> (64 - bitsOfPlace));
    }

    std::unique_ptr<std::array<Pair, numPairs>> pairs;
};

/// Remembers the whole numbers from 0 up to a bound: a column of them may hold far more different ones.
class WholeNumberMemory {
public:
    static constexpr std::size_t bound = std::size_t{1} << 14;

    /// The number that the text holds; nothing where that is not so simple, or it is not below the bound.
    /// @param text not empty.
    static std::optional<std::size_t> Read(std::string_view text) {
        if (text.size() > mostDigits) return std::nullopt;
        // The digits go to the end of the word; in front of them stand zeros.
        const std::uint64_t digits = (LoadEightBytes(text.data()) ^ eachZero) << 8 * (8 - text.size());
        if (((digits + eachOver) | digits) & eachHighBit) return std::nullopt;
        const std::uint64_t pairs = (digits * (1 + (10 << 8)) >> 8) & 0x00FF00FF00FF00FF;
        const std::uint64_t fours = (pairs * (1 + (100 << 16)) >> 16) & 0x0000FFFF0000FFFF;
        const std::uint64_t number = fours * (1 + (std::uint64_t{10000} << 32)) >> 32;
        if (number >= bound) return std::nullopt;
        return static_cast<std::size_t>(number);
    }

    /// The row that was kept for the number, if any.
    std::optional<FactorRow> Find(std::size_t number) const {
        if (number >= rows.size() || rows[number] == notKept) return std::nullopt;
        return rows[number];
    }
    /// @param number below the bound. @param row is not kept when it is high.
    void Keep(std::size_t number, FactorRow row) {
        if (row >= notKept) return;
        if (number >= rows.size()) rows.resize(std::bit_ceil(number + 1), notKept);
        rows[number] = static_cast<std::uint8_t>(row);
    }

private:
    static constexpr std::size_t mostDigits = 8;
    static constexpr std::uint64_t eachZero = 0x3030303030303030;
    /// Added to a byte above 9 this reaches its highest bit.
    static constexpr std::uint64_t eachOver = 0x7676767676767676;
    static constexpr std::uint64_t eachHighBit = 0x8080808080808080;
    static constexpr std::uint8_t notKept = 0xFF;

    /// As small as can be, to stay in the first cache.
    std::vector<std::uint8_t> rows;
};

}  // namespace nbscore

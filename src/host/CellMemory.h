#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

#include "batch/RowNumber.h"

namespace nbscore {

/// The rows that the latest short texts of a column stood for: most columns hold few different ones. Used by one
/// thread.
class CellMemory {
public:
    CellMemory() : entries(std::make_unique<std::array<Entry, numEntries>>()) {}

    /// Texts that are longer are not remembered.
    static constexpr std::size_t longestText = 8;

    /// The row that was kept for the text; nothing when it was none of the latest.
    /// @param text not empty, no longer than longestText, and standing where so many bytes can be read (TableBlock).
    std::optional<RowNumber> Find(std::string_view text) const {
        const std::uint64_t packed = Pack(text);
        const Entry& entry = (*entries)[PlaceOf(packed)];
        if (entry.text != packed || entry.length != text.size()) return std::nullopt;
        return entry.row;
    }
    void Keep(std::string_view text, RowNumber row) {
        const std::uint64_t packed = Pack(text);
        (*entries)[PlaceOf(packed)] = {packed, static_cast<std::uint32_t>(text.size()), row};
    }

private:
    static constexpr std::size_t numEntries = 2048;

    /// A new one is of no text, because texts are not empty.
    struct Entry {
        std::uint64_t text = 0;
        std::uint32_t length = 0;
        RowNumber row = missingRow;
    };

    /// Loaded whole and cut to the text, which is several times faster than to load the text alone.
    static std::uint64_t Pack(std::string_view text) {
        std::uint64_t packed = 0;
        std::memcpy(&packed, text.data(), longestText);
        const std::size_t unwantedBits = 8 * (longestText - text.size());
        if constexpr (std::endian::native == std::endian::little) return packed << unwantedBits;
        return packed >> unwantedBits;
    }
    static std::size_t PlaceOf(std::uint64_t packed) {
        return static_cast<std::size_t>((packed * 0x9E3779B97F4A7C15U) >> 53);
    }

    std::unique_ptr<std::array<Entry, numEntries>> entries;
};

}  // namespace nbscore

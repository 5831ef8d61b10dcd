#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "batch/ProbedTable.h"
#include "batch/RowNumber.h"

namespace nbscore {

/// Categories that are texts, equal byte by byte: the one at position p has the row firstKnownRow + p.
class TextRows {
public:
    /// @param texts copied. No two are equal.
    explicit TextRows(std::span<const std::string* const> texts);

    RowNumber RowOf(std::string_view text) const {
        const std::uint64_t hash = table.GetSeed().Hash(text);
        const auto tag = static_cast<std::uint32_t>(hash);
        return table.Find(hash, [&](const Entry& entry) { return entry.tag == tag && entry.text == text; });
    }
    /// A number is looked up by its digits, as a case's number is.
    RowNumber RowOf(double number) const;

    std::size_t GetNumRows() const { return firstKnownRow + numTexts; }

private:
    struct Entry {
        std::string_view text;
        std::uint32_t tag = 0;
        RowNumber row = unknownRow;
    };

    ProbedTable<Entry> MakeTable(std::span<const std::string* const> texts);

    std::shared_ptr<const std::string> bytes;  // shared by copies, whose entries point into it
    std::size_t numTexts;
    ProbedTable<Entry> table;
};

}  // namespace nbscore

#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "batch/ProbedTable.h"
#include "batch/RowNumber.h"
#include "naivebayes/TextHash.h"

namespace nbscore {

/// Categories that are numbers, equal exactly: the one at position p has the row firstKnownRow + p. A NaN is none.
class NumberRows {
public:
    /// @param numbers no two are equal, and none is a NaN.
    explicit NumberRows(std::span<const double> numbers) : numNumbers(numbers.size()), table(MakeTable(numbers)) {}

    RowNumber RowOf(double number) const {
        if (std::isnan(number)) return unknownRow;
        return table.Find(Hash(number, table.GetSeed()),
                          [number](const Entry& entry) { return entry.number == number; });
    }
    /// A text is looked up by the number that it holds, as a case's text is.
    RowNumber RowOf(std::string_view text) const;

    std::size_t GetNumRows() const { return firstKnownRow + numNumbers; }

    /// 0 and -0 are one number. The seed comes last: numbers of few digits have bits in few places, and differ in many
    /// only when they are mixed.
    static std::uint64_t Hash(double number, std::uint64_t seed) {
        return word_hash::Mix(word_hash::Mix(0, std::bit_cast<std::uint64_t>(number + 0.0)), seed);
    }

private:
    struct Entry {
        double number = 0.0;
        RowNumber row = unknownRow;
    };

    static ProbedTable<Entry> MakeTable(std::span<const double> numbers);

    std::size_t numNumbers;
    ProbedTable<Entry> table;
};

}  // namespace nbscore

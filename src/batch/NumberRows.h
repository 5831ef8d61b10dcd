#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "batch/ProbedTable.h"
#include "batch/RowNumber.h"

namespace nbscore {

/// Categories that are numbers, equal exactly: the one at position p has the row firstKnownRow + p. A NaN is none.
class NumberRows {
public:
    /// @param numbers no two are equal, and none is a NaN.
    explicit NumberRows(std::span<const double> numbers) : numNumbers(numbers.size()), table(MakeTable(numbers)) {}

    RowNumber RowOf(double number) const {
        if (std::isnan(number)) return unknownRow;
        return table.Find(table.GetSeed().Hash(number),
                          [number](const Entry& entry) { return entry.number == number; });
    }
    /// A text is looked up by the number that it holds, as a case's text is.
    RowNumber RowOf(std::string_view text) const;

    std::size_t GetNumRows() const { return firstKnownRow + numNumbers; }

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

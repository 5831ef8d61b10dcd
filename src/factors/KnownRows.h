#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "factors/FactorRow.h"
#include "factors/ProbedTable.h"
#include "framework/Export.h"

/// @file
/// Which row each value that a predictor knows stands for: a text, a number, or a number in a bin.

namespace nbscore {

/// Categories that are texts, equal byte by byte: the one at position p has the row firstKnownRow + p.
class SCOREFRAMEWORK_API TextRows {
public:
    /// @param texts copied. No two are equal.
    explicit TextRows(std::span<const std::string* const> texts);

    FactorRow RowOf(std::string_view text) const {
        if (text.size() <= HashSeed::shortSize) {
            const std::uint64_t word = HashSeed::WordOfShort(text);
            return table.Find(table.GetSeed().HashOfShort(word, text.size()), [&](const Entry& entry) {
                return entry.word == word && entry.text.size() == text.size();
            });
        }
        const std::uint64_t hash = table.GetSeed().Hash(text);
        return table.Find(hash, [&](const Entry& entry) { return entry.word == hash && entry.text == text; });
    }
    /// A number is looked up by its digits, as a case's number is.
    FactorRow RowOf(double number) const;

    std::size_t GetNumRows() const { return firstKnownRow + numTexts; }

private:
    struct Entry {
        std::string_view text;
        /// Of a short text all of it, of any other its hash.
        std::uint64_t word = 0;
        FactorRow row = unknownRow;
    };

    ProbedTable<Entry> MakeTable(std::span<const std::string* const> texts);

    std::shared_ptr<const std::string> bytes;  // shared by copies, whose entries point into it
    std::size_t numTexts;
    ProbedTable<Entry> table;
};

/// Categories that are numbers, equal exactly: the one at position p has the row firstKnownRow + p. A NaN is none.
class SCOREFRAMEWORK_API NumberRows {
public:
    /// @param numbers no two are equal, and none is a NaN.
    explicit NumberRows(std::span<const double> numbers) : numNumbers(numbers.size()), table(MakeTable(numbers)) {}

    FactorRow RowOf(double number) const {
        if (std::isnan(number)) return unknownRow;
        return table.Find(table.GetSeed().Hash(number),
                          [number](const Entry& entry) { return entry.number == number; });
    }
    /// A text is looked up by the number that it holds, as a case's text is.
    FactorRow RowOf(std::string_view text) const;

    std::size_t GetNumRows() const { return firstKnownRow + numNumbers; }

private:
    struct Entry {
        double number = 0.0;
        FactorRow row = unknownRow;
    };

    static ProbedTable<Entry> MakeTable(std::span<const double> numbers);

    std::size_t numNumbers;
    ProbedTable<Entry> table;
};

/// The bin of a number: 0 for x <= c[0], k for c[k-1] < x <= c[k], the last one above the last cutpoint.
///
/// @param cutpoints in ascending order; taken as they stand: the search neither checks nor sorts.
inline int FindBin(std::span<const double> cutpoints, double number) {
    int low = 0;
    int high = static_cast<int>(cutpoints.size()) - 1;
    // These start values are kept where there are no cutpoints, on purpose: the single bin then answers 0 for
    // a negative number and 1 for any other. A table without a row for code 1 is found by the model's
    // FindScoringObstacle, and stops the process when scored all the same.
    int middle = 0;
    double cutpoint = 0.0;
    // A NaN is neither equal, nor above, nor below: the search ends at the first cutpoint and answers 1, deliberately.
    while (low <= high) {
        middle = (low + high) / 2;
        cutpoint = cutpoints[static_cast<std::size_t>(middle)];
        if (number == cutpoint) return middle;
        if (cutpoint <= number) {
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return cutpoint > number ? middle : middle + 1;
}

/// Bins of numbers, of one predictor or of several at once that have cutpoints of their own.
///
/// The number line falls into cells: the cutpoints of all, each by itself, the open intervals between them, and the
/// NaN. What a search finds depends on nothing but comparisons with cutpoints, so all numbers of a cell fall into the
/// same bin, whatever the cutpoints' order. Cells whose bins are the same for every predictor share a row.
class SCOREFRAMEWORK_API BinRows {
public:
    /// @param cutpoints one list for each predictor, as FindBin takes it.
    explicit BinRows(std::span<const std::vector<double>* const> cutpoints);

    FactorRow RowOf(double number) const { return rowOfCell[CellOf(number)]; }
    /// A text is in no bin, whatever it holds.
    static FactorRow RowOf(std::string_view /*text*/) { return unknownRow; }

    std::size_t GetNumRows() const { return numRows; }
    /// The bin of a predictor that a row from firstKnownRow on stands for.
    int GetBin(std::size_t predictor, FactorRow row) const { return binsOfRow[row - firstKnownRow][predictor]; }

private:
    /// Long lists are searched by halves, short ones counted through without a branch.
    static constexpr std::size_t fewBoundaries = 24;

    std::size_t CellOf(double number) const {
        if (boundaries.size() > fewBoundaries) return CellBySearch(number);
        // Below each boundary, upon it, above it: 0, 1 or 2 cells are passed. A NaN passes none.
        std::size_t cell = number == number ? 0 : rowOfCell.size() - 1;
        for (const double boundary : boundaries)
            cell += static_cast<std::size_t>(number >= boundary) + static_cast<std::size_t>(number > boundary);
        return cell;
    }
    std::size_t CellBySearch(double number) const;
    double SampleOf(std::size_t cell) const;

    std::vector<double> boundaries;
    std::vector<FactorRow> rowOfCell;
    std::vector<std::vector<int>> binsOfRow;
    std::size_t numRows = firstKnownRow;
};

}  // namespace nbscore

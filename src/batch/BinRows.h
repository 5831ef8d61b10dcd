#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "batch/RowNumber.h"

namespace nbscore {

/// Bins of numbers, of one predictor or of several at once that have cutpoints of their own.
///
/// The number line falls into cells: the cutpoints of all, each by itself, the open intervals between them, and the
/// NaN. What a search finds depends on nothing but comparisons with cutpoints, so all numbers of a cell fall into the
/// same bin, whatever the cutpoints' order. Cells whose bins are the same for every predictor share a row.
class BinRows {
public:
    /// @param cutpoints one list for each predictor, as FindBin takes it.
    explicit BinRows(std::span<const std::vector<double>* const> cutpoints);

    RowNumber RowOf(double number) const { return rowOfCell[CellOf(number)]; }
    /// A text is in no bin, whatever it holds.
    static RowNumber RowOf(std::string_view /*text*/) { return unknownRow; }

    std::size_t GetNumRows() const { return numRows; }
    /// The bin of a predictor that a row from firstKnownRow on stands for.
    int GetBin(std::size_t predictor, RowNumber row) const { return binsOfRow[row - firstKnownRow][predictor]; }

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
    std::vector<RowNumber> rowOfCell;
    std::vector<std::vector<int>> binsOfRow;
    std::size_t numRows = firstKnownRow;
};

}  // namespace nbscore

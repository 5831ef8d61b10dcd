#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace nbscore {

/// The cells of one column of some rows. Borrowed.
struct CsvColumn {
    const char* bytes;
    /// One less than where each cell begins.
    const std::uint32_t* before;
    std::size_t betweenBefore;
    const std::uint32_t* ends;
    std::size_t betweenEnds;

    std::string_view operator[](std::size_t row) const {
        const std::uint32_t begin = before[row * betweenBefore] + 1;
        return {bytes + begin, ends[row * betweenEnds] - begin};
    }
};

/// The cells of some rows of a table, all of the same number of cells, where they stand in its bytes. Borrowed.
///
/// A cell begins right behind the mark that ends the one before it. So the marks alone tell where the cells are, and
/// nothing has to be written down for each of them, unless some had quotes.
struct CsvRows {
    const char* bytes = nullptr;
    std::size_t numColumns = 0;
    /// One less than where each row begins: line ends are of one byte or two.
    const std::uint32_t* beforeRows = nullptr;
    /// One less than where each cell begins, row by row; null where cells begin as said above.
    const std::uint32_t* before = nullptr;
    const std::uint32_t* ends = nullptr;

    CsvColumn GetColumn(std::size_t column) const {
        if (before != nullptr) return {bytes, before + column, numColumns, ends + column, numColumns};
        if (column == 0) return {bytes, beforeRows, 1, ends, numColumns};
        return {bytes, ends + column - 1, numColumns, ends + column, numColumns};
    }
    std::string_view GetCell(std::size_t row, std::size_t column) const { return GetColumn(column)[row]; }
    /// @param cells become those of the row.
    void ListCells(std::size_t row, std::vector<std::string_view>& cells) const {
        cells.clear();
        for (std::size_t column = 0; column < numColumns; ++column)
            cells.push_back(GetCell(row, column));
    }
};

}  // namespace nbscore

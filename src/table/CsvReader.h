#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/Utf8Check.h"
#include "table/CsvRows.h"
#include "table/CsvScanner.h"
#include "table/TableBlockReader.h"

namespace nbscore {

/// The cells of a row of the input.
struct InputRow {
    /// May be left out where all of them are known as they would be written to the output.
    std::span<const std::string_view> cells;
    /// All of them as they would be written to the output; empty where that is not known.
    std::string_view asWritten;
};

/// Reads the rows of blocks of comma-separated values, one at a time. CsvScanner says what they look like; cells are
/// not trimmed, and an empty line is a row with one empty cell.
class CsvRowReader {
public:
    /// Keeps what a row of nothing but delimiters takes in memory in bounds.
    static constexpr std::size_t maxCells = 1'000'000;

    /// @param sourceName what errors call the table.
    CsvRowReader(std::string sourceName, char cellDelimiter);

    /// Begins with a block, which is borrowed and may be changed in place until the next one.
    void Start(TableBlock& nextBlock);
    /// Reads the next row; false at the end of the block. Throws CaseDataError for a quote that is not closed or stands
    /// where none may, a NUL byte, bytes that are no UTF-8, or a row that is too long or has too many cells. After that
    /// the block is of no more use.
    bool ReadRow() {
        ForgetRows();
        return ReadRowBehind();
    }
    /// The same, and keeps the cells of the rows before.
    bool ReadRowBehind();
    /// The same for many rows at once, up to the first one that may have a fault or quotes, or has another number of
    /// cells. Appends of each what GetAsWritten and GetRowLine would give; answers how many there were.
    std::size_t ReadPlainRowsBehind(std::size_t most, std::size_t numCells,
                                    std::vector<std::string_view>& rowsAsWritten, std::vector<std::uint64_t>& lines);
    void ForgetRows() {
        keptCells = rowCells = endOfCells;
        beforeRows.clear();
        beforeCells.clear();
    }

    /// The texts of the row that was read last, valid until the next one is. They last as long as the block.
    std::span<const std::string_view> GetCells();
    std::size_t CountCells() const { return endOfCells - rowCells; }
    /// The cells of all rows that are kept, valid until the next row is read.
    /// @param numColumns how many cells each of them has.
    CsvRows GetKeptRows(std::size_t numColumns) const { return GetRows(numColumns, 0, keptCells); }
    /// The row that was read last as it would be written again with the same delimiter; empty where that is not known.
    std::string_view GetAsWritten() const { return asWritten; }
    /// The same row for a writer.
    /// @param isCopied whether cells are written with the same delimiter.
    InputRow GetInputRow(bool isCopied) { return {GetCells(), isCopied ? asWritten : std::string_view()}; }
    /// The line on which it begins, from 1.
    std::uint64_t GetRowLine() const { return rowLine; }
    const std::string& GetSourceName() const { return source; }

private:
    CsvRows GetRows(std::size_t numColumns, std::size_t firstRow, std::size_t firstCell) const;
    bool FindMoreMarks();
    void EndLastRow();
    void EndRow(std::size_t cellsEnd, std::size_t nextRow);
    void ListBeforeCells();
    void TakeQuotesOff();
    std::string_view TakeQuotesOff(std::string_view cell);
    void CheckText(std::size_t reached, std::optional<std::size_t> openQuote = std::nullopt) const;
    [[noreturn]] void RefuseTooManyCells() const;
    [[noreturn]] void Refuse(std::size_t position, const std::string& problem) const;
    std::uint64_t GetLineOf(std::size_t position) const;

    std::string source;
    TableBlock* block = nullptr;
    CsvScanner scanner;
    /// Where cells end: those of rows that are kept, and all others that the scanner has found.
    std::vector<std::uint32_t> marks;
    std::size_t numMarks = 0;
    /// Among them the first cell of the rows that are kept, the first one of the last row, and the one behind it.
    std::size_t keptCells = 0;
    std::size_t rowCells = 0;
    std::size_t endOfCells = 0;
    /// Which of the marks that were found last end rows, from the first of these marks on.
    std::unique_ptr<std::uint32_t[]> rowEnds;
    std::size_t numRowEnds = 0;
    std::size_t nextRowEnd = 0;
    std::size_t foundLast = 0;
    /// Of the rows that are kept; of their cells only where some row may have quotes (CsvRows).
    std::vector<std::uint32_t> beforeRows;
    std::vector<std::uint32_t> beforeCells;
    /// The texts of the last row, once they were asked for.
    std::vector<std::string_view> texts;
    /// Where the block's text ceases to be sound; behind the block where all is.
    Utf8Check soundText{};
    /// Whether some text may have to be put in quotes for what it begins with.
    bool mayHoldByteOrderMarks = false;
    std::size_t rowBegin = 0;
    std::size_t nextRowBegin = 0;
    std::uint64_t rowLine = 0;
    std::uint64_t nextLine = 1;
    /// All cells of the row as they stand in the table, where that is how they would be written again; empty where that
    /// is not known.
    std::string_view asWritten;
};

/// Reads a table of comma-separated values as a stream, one row at a time: see TableBlockReader and CsvRowReader. A
/// row's texts are valid until the next row is read.
class CsvReader {
public:
    static constexpr std::size_t maxRowBytes = TableBlockReader::maxRowBytes;

    /// @param input borrowed; the rest as for TableBlockReader.
    CsvReader(std::istream& input, const std::string& sourceName, char delimiter)
        : blocks(input, sourceName, delimiter), rows(sourceName, delimiter) {
        rows.Start(block);
    }

    /// Reads the next row into cells; false at the end of the table. Throws what its parts throw; after that the reader
    /// is of no more use.
    bool ReadRow(std::vector<std::string_view>& cells) {
        cells.clear();
        while (!rows.ReadRow()) {
            if (!blocks.Read(block)) return false;
            rows.Start(block);
        }
        cells.assign(rows.GetCells().begin(), rows.GetCells().end());
        return true;
    }

    /// The line on which the row that was read last begins, from 1.
    std::uint64_t GetRowLine() const { return rows.GetRowLine(); }
    /// How many bytes were taken from the stream so far.
    std::uint64_t GetBytesRead() const { return blocks.GetBytesRead(); }
    const std::string& GetSourceName() const { return blocks.GetSourceName(); }

private:
    TableBlockReader blocks;
    TableBlock block;
    CsvRowReader rows;
};

}  // namespace nbscore

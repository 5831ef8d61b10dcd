#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/CellSplitter.h"
#include "host/InputRow.h"
#include "host/TableBlock.h"

namespace nbscore {

/// Reads the rows of blocks of comma-separated values (RFC 4180), one at a time.
///
/// Quoted cells may hold delimiters, doubled quotes and line breaks; rows end in LF, CR or CRLF, the last one also with
/// the table. An empty line is a row with one empty cell. Cells are not trimmed.
class CsvRowReader {
public:
    /// @param sourceName what errors call the table.
    CsvRowReader(std::string sourceName, char cellDelimiter);

    /// Begins with a block, which is borrowed and may be changed in place until the next one.
    void Start(TableBlock& nextBlock);
    /// Reads the next row; false at the end of the block. Throws CaseDataError for a quote that is not closed or stands
    /// where none may, a NUL byte, bytes that are no UTF-8, or a row that is too long or has too many cells. After that
    /// the block is of no more use.
    bool ReadRow();

    /// The texts of the row that was read last. They last as long as the block.
    const std::vector<std::string_view>& GetCells() const { return cells; }
    /// The same for a writer.
    /// @param isCopied whether cells are written with the same delimiter.
    InputRow GetInputRow(bool isCopied) const { return {cells, isCopied ? asWritten : std::string_view()}; }
    /// The line on which it begins, from 1.
    std::uint64_t GetRowLine() const { return rowLine; }
    const std::string& GetSourceName() const { return source; }

private:
    void FindMarksOf(std::string_view bytes);
    bool ReadPlainRow();
    void EndPlainRow(std::size_t cellBegin, std::size_t cellEnd, std::size_t nextRow);
    void ReadQuotedRow();
    void CheckText() const;
    [[noreturn]] void RefuseStructure(CellSplitter::Outcome outcome) const;
    [[noreturn]] void RefuseLongRow() const;
    [[noreturn]] void Refuse(std::size_t position, const std::string& problem) const;
    std::uint64_t GetLineOf(std::size_t position) const;
    std::string_view MakeText(const CellSplitter::Cell& cell);
    std::string_view GetRest() const { return block->GetBytes().substr(rowBegin); }

    std::string source;
    char delimiter;
    CellSplitter splitter;
    TableBlock* block = nullptr;
    std::unique_ptr<std::uint32_t[]> marks;
    std::size_t roomForMarks = 0;
    std::size_t numMarks = 0;
    std::size_t nextMark = 0;
    /// Whether the block is sound text, and its marks were found.
    bool canHavePlainRows = false;
    /// Whether some text may have to be put in quotes for what it begins with.
    bool mayHoldByteOrderMarks = false;
    std::size_t rowBegin = 0;
    std::size_t nextRowBegin = 0;
    std::uint64_t rowLine = 0;
    std::uint64_t nextLine = 1;
    std::vector<std::string_view> cells;
    /// All cells as they stand in the table, where that is how they would be written again; empty where that is not
    /// known.
    std::string_view asWritten;
};

}  // namespace nbscore

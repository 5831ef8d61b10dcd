#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "host/CellSplitter.h"
#include "host/InputBuffer.h"

namespace nbscore {

/// Reads a table of comma-separated values (RFC 4180) as a stream, one row at a time.
///
/// Quoted cells may hold delimiters, doubled quotes and line breaks; rows end in LF or CRLF, the last one also
/// with the table; a byte order mark in front is passed over. An empty line is a row with one empty cell. Memory is
/// bounded by the longest row, which is bounded by maxRowBytes and CellSplitter::maxCells. Cells are not trimmed.
/// A row's texts are valid until the next row is read.
class CsvReader {
public:
    static constexpr std::size_t maxRowBytes = std::size_t{64} << 20;

    /// @param input borrowed; @param sourceName what errors call it; @param delimiter between cells: any ASCII
    ///     character but a quote, a line break or NUL, for which std::invalid_argument is thrown.
    CsvReader(std::istream& input, std::string sourceName, char delimiter);

    /// Reads the next row into cells; false at the end of the table. Throws CaseDataError for a quote that is not
    /// closed or stands where none may, a NUL byte, bytes that are no UTF-8, or a row that is too long; throws
    /// InputOutputError when the stream fails. After that the reader is of no more use.
    bool ReadRow(std::vector<std::string_view>& cells);

    /// The line on which the row that was read last begins, from 1.
    std::uint64_t GetRowLine() const { return rowLine; }
    /// How many bytes were taken from the stream so far.
    std::uint64_t GetBytesRead() const { return buffer.GetBytesRead(); }
    const std::string& GetSourceName() const { return buffer.GetSourceName(); }

private:
    void PassByteOrderMark();
    void FindRow();
    void CheckText(CellSplitter::Outcome outcome);
    [[noreturn]] void RefuseStructure(CellSplitter::Outcome outcome) const;
    [[noreturn]] void RefuseLongRow() const;
    [[noreturn]] void Refuse(std::size_t position, const std::string& problem) const;
    std::uint64_t GetLineOf(std::size_t position) const;
    std::string_view MakeText(const CellSplitter::Cell& cell);

    InputBuffer buffer;
    CellSplitter splitter;
    bool started = false;
    std::uint64_t rowLine = 0;
    std::uint64_t nextLine = 1;
    std::size_t rowBytes = 0;
    std::size_t checkedBytes = 0;
};

}  // namespace nbscore

#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "host/CsvRowReader.h"
#include "host/TableBlock.h"
#include "host/TableBlockReader.h"

namespace nbscore {

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
        cells = rows.GetCells();
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

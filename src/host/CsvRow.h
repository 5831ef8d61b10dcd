#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/CsvText.h"

namespace nbscore {

/// Appends one row of comma-separated values to a text, cell by cell. Rows end in LF on every system.
class CsvRow {
public:
    /// @param destination borrowed; nobody else appends to it before End.
    CsvRow(std::string& destination, char cellDelimiter)
        : text(destination), delimiter(cellDelimiter), begin(destination.size()) {}

    void Add(std::string_view cell) {
        if (hasCells) text += delimiter;
        hasCells = true;
        AppendCsvCell(text, cell, delimiter);
    }

    /// Ends the row. An only cell that is empty becomes "" (two quotes), so that it does not read as an empty line.
    void End() {
        if (text.size() == begin) text += "\"\"";
        text += '\n';
    }

private:
    std::string& text;
    char delimiter;
    std::size_t begin;
    bool hasCells = false;
};

}  // namespace nbscore

#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace nbscore {

/// Appends a cell as RFC 4180 writes it: in quotes, with its quotes doubled, when it holds the delimiter, a quote
/// or a line break; as it stands otherwise. A text that begins with a byte order mark is put in quotes too, so that
/// in front of a table it reads as text.
inline void AppendCsvCell(std::string& text, std::string_view cell, char delimiter) {
    const bool holdsMark = std::any_of(cell.begin(), cell.end(), [delimiter](char character) {
        return character == delimiter || character == '"' || character == '\n' || character == '\r';
    });
    if (!holdsMark && !cell.starts_with("\xEF\xBB\xBF")) {
        text += cell;
        return;
    }
    text += '"';
    for (const char character : cell) {
        if (character == '"') text += '"';
        text += character;
    }
    text += '"';
}

/// Appends one row of comma-separated values to a text, cell by cell. Rows end in LF on every system.
class CsvRow {
public:
    /// @param destination borrowed; nothing else appends to it before End.
    /// @param isBegun whether cells of the row stand at the text's end already.
    CsvRow(std::string& destination, char cellDelimiter, bool isBegun = false)
        : text(destination),
          delimiter(cellDelimiter),
          begin(destination.size()),
          hasCells(isBegun),
          wasBegun(isBegun) {}

    void Add(std::string_view cell) {
        AddPlain([this, cell](std::string& row) { AppendCsvCell(row, cell, delimiter); });
    }

    /// Adds a cell that is known to need no quotes.
    /// @param appendCell appends its text to the string that it is given.
    template <typename AppendCell>
    void AddPlain(const AppendCell& appendCell) {
        if (hasCells) text += delimiter;
        hasCells = true;
        appendCell(text);
    }

    /// Adds a cell that stands in the text already, with the delimiter in front of it.
    void AddAgain(std::size_t cellBegin, std::size_t length) {
        hasCells = true;
        text.append(text, cellBegin, length);
    }

    /// Ends the row. An only cell that is empty becomes "" (two quotes), so that it does not read as an empty line.
    void End() {
        if (!wasBegun) QuoteIfEmpty();
        text += '\n';
    }
    void QuoteIfEmpty() {
        if (text.size() == begin) text += "\"\"";
    }

private:
    std::string& text;
    char delimiter;
    std::size_t begin;
    bool hasCells;
    bool wasBegun;
};

}  // namespace nbscore

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
        BeginCell();
        AppendCsvCell(text, cell, delimiter);
    }

    /// Adds a cell that is known to need no quotes.
    void AddPlain(std::string_view cell) {
        BeginCell();
        text += cell;
    }

    /// Adds some cells that are known to need no quotes, all of them together because a text grows slowly.
    /// @param mostBytes that a cell takes. @param writeCell writes one to memory with room for so many, which it may
    ///     write over, and tells where it ends; called with the cell's number, from 0.
    template <typename WriteCell>
    void AddPlain(std::size_t count, std::size_t mostBytes, const WriteCell& writeCell) {
        const std::size_t cellsBegin = text.size();
        text.resize(cellsBegin + count * (mostBytes + 1));
        char* end = text.data() + cellsBegin;
        for (std::size_t i = 0; i < count; ++i) {
            if (hasCells) *end++ = delimiter;
            hasCells = true;
            end = writeCell(i, end);
        }
        text.resize(static_cast<std::size_t>(end - text.data()));
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
    void BeginCell() {
        if (hasCells) text += delimiter;
        hasCells = true;
    }

    std::string& text;
    char delimiter;
    std::size_t begin;
    bool hasCells;
    bool wasBegun;
};

}  // namespace nbscore

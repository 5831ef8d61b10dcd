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
    // Letters and digits stand behind most delimiters: one comparison sees to them.
    const char last = std::max(delimiter, '"');
    const bool holdsMark = std::any_of(cell.begin(), cell.end(), [delimiter, last](char character) {
        return character <= last &&
               (character == delimiter || character == '"' || character == '\n' || character == '\r');
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
    /// @param destination borrowed; of no use to others as long as the row lasts.
    /// @param isBegun whether cells of the row stand at the text's end already.
    CsvRow(std::string& destination, char cellDelimiter, bool isBegun = false)
        : text(destination),
          delimiter(cellDelimiter),
          begin(destination.size()),
          end(begin),
          hasCells(isBegun),
          wasBegun(isBegun) {}
    ~CsvRow() { text.resize(end); }
    CsvRow(const CsvRow&) = delete;
    CsvRow& operator=(const CsvRow&) = delete;

    /// Makes room for so many bytes, because a text grows slowly: what follows is faster when this was done once.
    void Reserve(std::size_t bytes) {
        if (text.size() - end < bytes) text.resize(end + bytes);
    }

    void Add(std::string_view cell) {
        BeginCell();
        text.resize(end);
        AppendCsvCell(text, cell, delimiter);
        end = text.size();
    }

    /// Adds a cell that is known to need no quotes.
    void AddPlain(std::string_view cell) {
        BeginCell();
        Reserve(cell.size());
        std::copy(cell.begin(), cell.end(), text.data() + end);
        end += cell.size();
    }

    /// Adds some cells that are known to need no quotes.
    /// @param mostBytes that a cell takes. @param writeCell writes one to memory with room for so many, which it may
    ///     write over, and tells where it ends; called with the cell's number, from 0.
    template <typename WriteCell>
    void AddPlain(std::size_t count, std::size_t mostBytes, const WriteCell& writeCell) {
        Reserve(count * (mostBytes + 1));
        char* to = text.data() + end;
        for (std::size_t i = 0; i < count; ++i) {
            if (hasCells) *to++ = delimiter;
            hasCells = true;
            to = writeCell(i, to);
        }
        end = static_cast<std::size_t>(to - text.data());
    }

    /// Ends the row. An only cell that is empty becomes "" (two quotes), so that it does not read as an empty line.
    void End() {
        if (!wasBegun) QuoteIfEmpty();
        AddCharacter('\n');
    }
    void QuoteIfEmpty() {
        if (end != begin) return;
        AddCharacter('"');
        AddCharacter('"');
    }

private:
    void BeginCell() {
        if (hasCells) AddCharacter(delimiter);
        hasCells = true;
    }
    void AddCharacter(char character) {
        Reserve(1);
        text.data()[end++] = character;
    }

    std::string& text;
    char delimiter;
    std::size_t begin;
    /// Of what was written; the text may be longer.
    std::size_t end;
    bool hasCells;
    bool wasBegun;
};

}  // namespace nbscore

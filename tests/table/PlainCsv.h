#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore::test {

/// The first row of some comma-separated values, read byte by byte.
struct PlainRow {
    enum class End { LineEnd, EndOfText, StrayQuote, TextBehindQuote, OpenQuote };

    End end = End::EndOfText;
    std::vector<std::string> cells;
    /// Where each cell ends: at a delimiter, a line end or the text's end.
    std::vector<std::size_t> cellEnds;
    /// Behind the row; at a fault, where it is.
    std::size_t size = 0;
    bool hasQuotes = false;

    bool HasFault() const { return end != End::LineEnd && end != End::EndOfText; }
};

inline PlainRow ReadPlainRow(std::string_view text, char delimiter) {
    PlainRow row;
    std::string cell;
    std::size_t i = 0;
    const auto endCell = [&] {
        row.cells.push_back(cell);
        row.cellEnds.push_back(i);
        cell.clear();
    };
    const auto endRow = [&](PlainRow::End end, std::size_t size) {
        row.end = end;
        row.size = size;
        return row;
    };
    const auto isLineEnd = [&] { return text[i] == '\r' || text[i] == '\n'; };
    while (true) {
        if (i < text.size() && text[i] == '"') {
            row.hasQuotes = true;
            for (++i;; ++i) {
                if (i == text.size()) return endRow(PlainRow::End::OpenQuote, i);
                if (text[i] == '"' && (i + 1 == text.size() || text[i + 1] != '"')) break;
                if (text[i] == '"') ++i;
                cell += text[i];
            }
            ++i;
            if (i < text.size() && text[i] != delimiter && !isLineEnd())
                return endRow(PlainRow::End::TextBehindQuote, i);
        }
        while (i < text.size() && text[i] != delimiter && !isLineEnd()) {
            if (text[i] == '"') return endRow(PlainRow::End::StrayQuote, i);
            cell += text[i++];
        }
        endCell();
        if (i == text.size()) return endRow(PlainRow::End::EndOfText, i);
        if (isLineEnd()) return endRow(PlainRow::End::LineEnd, i + (text.substr(i).starts_with("\r\n") ? 2 : 1));
        ++i;
    }
}

/// How many lines end: as an editor would count, byte by byte, taking a line feed behind a carriage return with it.
inline std::uint64_t CountPlainLines(std::string_view text) {
    std::uint64_t lines = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        ++lines;
        if (text.substr(i).starts_with("\r\n")) ++i;
    }
    return lines;
}

}  // namespace nbscore::test

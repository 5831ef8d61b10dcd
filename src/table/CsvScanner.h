#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nbscore {

/// Finds where the cells and rows of comma-separated values end (RFC 4180). The one place that knows their grammar.
///
/// A cell that begins with a quote lasts until the quote that closes it; two quotes in it stand for one, and everything
/// else for itself. Rows end in LF, CR or CRLF, by turns if they like; a CR with an LF behind it is one end, not two.
class CsvScanner {
public:
    enum class Fault {
        None,
        /// A quote inside a cell that does not begin with one.
        StrayQuote,
        /// Text behind the closing quote of a cell.
        TextBehindQuote
    };

    /// What is known of the bytes that were looked at.
    struct State {
        std::size_t position = 0;
        /// Behind the last whole row; 0 when none has ended so far.
        std::size_t rowEnd = 0;
        std::uint64_t lineEnds = 0;
        Fault fault = Fault::None;
        bool hasQuotes = false;
        bool hasLineEndsInQuotes = false;
        /// All bits are set within quotes, none outside.
        std::uint64_t inQuotes = 0;
        /// 1 or 0, each of the last byte: whether a cell or the first row begins behind it, whether it closes a cell,
        /// whether it is a CR.
        std::uint64_t afterSeparator = 1;
        std::uint64_t afterClosingQuote = 0;
        std::uint64_t afterCarriageReturn = 0;
    };

    /// How many marks FindMarks has found, and how many of them end rows.
    struct Found {
        std::size_t marks = 0;
        std::size_t rowEnds = 0;
    };

    /// How many bytes FindMarks looks at, and so how many marks it may find.
    static constexpr std::size_t bytesAtOnce = std::size_t{32} << 10;
    /// The room that it needs for them: some of it is written over without need, which is faster than to ask.
    static constexpr std::size_t roomForMarks = bytesAtOnce + 64;

    explicit CsvScanner(char cellDelimiter) : delimiter(cellDelimiter) {}

    /// Begins with other bytes, the first one of which begins a row.
    void Start() { state = State(); }

    /// Goes on to the end of the bytes, for row ends and line ends only.
    ///
    /// A row that ends in a CR is whole at once, though an LF may follow with the next bytes. A stray quote ends the
    /// search: the reader of the row meets it. Text behind a quote is left to that reader, too.
    /// @param bytes all from the first one; those handed in before must be the same.
    void FindRowEnds(std::string_view bytes);

    /// Goes on by some bytes, for what ends cells: delimiters, and the first byte of what ends a row, outside quotes.
    /// Tells how many there are, which may be none. Finds no more behind a fault.
    /// @param bytes as above, fewer than 4 GB. @param marks room for roomForMarks positions.
    /// @param rowEnds room for as many: which of these marks end rows, counted from 0.
    Found FindMarks(std::string_view bytes, std::uint32_t* marks, std::uint32_t* rowEnds);

    /// How many bytes were looked at; at a fault those before the byte at fault.
    std::size_t GetPosition() const { return state.position; }
    /// Behind the last whole row that FindRowEnds found; 0 when there was none.
    std::size_t GetRowEnd() const { return state.rowEnd; }
    /// How many lines end in what FindRowEnds looked at, within quotes or outside.
    std::uint64_t GetLineEnds() const { return state.lineEnds; }
    Fault GetFault() const { return state.fault; }
    /// Whether the bytes looked at so far end within a cell in quotes, without a fault before.
    bool IsInQuotes() const { return state.fault == Fault::None && state.inQuotes != 0; }
    /// Whether FindMarks has seen some quote, or some line end within quotes.
    bool HasQuotes() const { return state.hasQuotes; }
    bool HasLineEndsInQuotes() const { return state.hasLineEndsInQuotes; }

private:
    char delimiter;
    State state;
};

/// How long the delimiter or line end is that begins at a position.
inline std::size_t LengthOfMark(std::string_view bytes, std::size_t position) {
    return bytes[position] == '\r' && position + 1 < bytes.size() && bytes[position + 1] == '\n' ? 2 : 1;
}

/// How many lines end in these bytes.
std::uint64_t CountLineEnds(std::string_view bytes);

}  // namespace nbscore

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace nbscore {

/// Finds where the cells of one row of comma-separated values lie, in bytes that may arrive piece by piece.
///
/// It only marks places: it copies, changes and checks no text. A row ends in LF, CR or CRLF. One that ends in CR ends
/// there at once, when nothing more is known: a line feed that comes later is for the caller to pass over.
class CellSplitter {
public:
    /// A cell's text, without its quotes, as offsets from the row's first byte.
    struct Cell {
        std::size_t begin;
        std::size_t end;
        /// The text holds doubled quotes that stand for single ones.
        bool doubledQuotes;
    };
    enum class Outcome { RowEnds, NeedsMore, StrayQuote, TextBehindQuote, UnclosedQuote, TooManyCells };

    /// Keeps what a row of nothing but delimiters takes in memory in bounds.
    static constexpr std::size_t maxCells = 1'000'000;

    explicit CellSplitter(char delimiter);

    void StartRow();
    /// Goes on where the last call stopped.
    /// @param row all bytes from the row's first one; those handed in before must be the same.
    /// @param inputEnds true when nothing follows these bytes.
    Outcome Continue(std::string_view row, bool inputEnds);

    /// How many bytes were looked at: at the end of the row, those of the row with its line end; at a fault, those
    /// before the byte at fault.
    std::size_t GetPosition() const { return position; }
    /// Where the quote stands that opened the cell seen last in quotes.
    std::size_t GetQuotePosition() const { return quotePosition; }
    bool IsInQuotes() const { return state == State::InQuotes; }
    bool HasQuotes() const { return hasQuotes; }
    const std::vector<Cell>& GetCells() const { return cells; }

private:
    enum class State { CellBegins, InText, InQuotes, BehindQuote };

    std::optional<Outcome> Step(std::string_view row, bool inputEnds);
    std::optional<Outcome> BeginCell(std::string_view row, bool inputEnds);
    std::optional<Outcome> PassText(std::string_view row, bool inputEnds);
    std::optional<Outcome> PassQuotedText(std::string_view row, bool inputEnds);
    std::optional<Outcome> PassClosingQuote(std::string_view row, bool inputEnds);
    Outcome EndRow(std::size_t cellEnd, std::size_t lineEndBytes);
    void EndCell(std::size_t cellEnd);

    char delimiter;
    std::array<bool, 256> endsText{};
    State state = State::CellBegins;
    std::size_t position = 0;
    std::size_t cellBegin = 0;
    std::size_t quotePosition = 0;
    bool doubledQuotes = false;
    bool hasQuotes = false;
    std::vector<Cell> cells;
};

}  // namespace nbscore

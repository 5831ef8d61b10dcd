#pragma once

#include <cstddef>
#include <string_view>

namespace nbscore {

/// Finds where the last whole row ends in comma-separated values that may arrive piece by piece. Looks at quotes and
/// line ends only, so that it is done long before the cells are looked at.
class RowEndFinder {
public:
    explicit RowEndFinder(char cellDelimiter) : delimiter(cellDelimiter) {}

    /// Starts at the first byte of a row.
    void Start();
    /// Goes on where the last call stopped.
    /// @param bytes all from the first one; those handed in before must be the same.
    void Continue(std::string_view bytes);

    /// Behind the last whole row; 0 when none has ended so far. A row that ends in a carriage return is whole at once,
    /// though a line feed may follow with the next bytes.
    std::size_t GetRowEnd() const { return rowEnd; }
    /// Whether a quote stands where none may. Nothing behind it is looked at: whoever reads the row meets it.
    bool HasFault() const { return hasFault; }

private:
    void PassText(std::string_view bytes);
    void PassQuotedText(std::string_view bytes);

    char delimiter;
    std::size_t position = 0;
    std::size_t rowEnd = 0;
    bool isInQuotes = false;
    bool hasFault = false;
};

}  // namespace nbscore

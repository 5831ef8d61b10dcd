#include "host/RowEndFinder.h"

#include <algorithm>

#include "host/LineEnds.h"

namespace nbscore {

void RowEndFinder::Start() {
    position = 0;
    rowEnd = 0;
    isInQuotes = false;
    hasFault = false;
}

void RowEndFinder::Continue(std::string_view bytes) {
    while (position < bytes.size() && !hasFault) {
        const std::size_t before = position;
        if (isInQuotes) {
            PassQuotedText(bytes);
        } else {
            PassText(bytes);
        }
        if (position == before) return;
    }
}

void RowEndFinder::PassText(std::string_view bytes) {
    const std::size_t quote = std::min(bytes.find('"', position), bytes.size());
    std::size_t behindLastRow = quote;
    while (behindLastRow > position && !IsLineBreak(bytes[behindLastRow - 1]))
        --behindLastRow;
    if (behindLastRow > position) rowEnd = behindLastRow;
    if (quote == bytes.size()) {
        position = quote;
        return;
    }
    hasFault = quote > 0 && !IsLineBreak(bytes[quote - 1]) && bytes[quote - 1] != delimiter;
    isInQuotes = true;
    position = quote + 1;
}

/// Stops before a quote that the bytes end with: whether it closes the cell, the next byte tells.
void RowEndFinder::PassQuotedText(std::string_view bytes) {
    position = std::min(bytes.find('"', position), bytes.size());
    if (position + 1 >= bytes.size()) return;
    isInQuotes = bytes[position + 1] == '"';
    position += isInQuotes ? 2 : 1;
}

}  // namespace nbscore

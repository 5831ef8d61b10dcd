#include "host/CellSplitter.h"

#include "host/LineEnds.h"

namespace nbscore {

CellSplitter::CellSplitter(char delimiterCharacter) : delimiter(delimiterCharacter) {
    for (const char special : {delimiter, '"', '\r', '\n'}) {
        endsText[static_cast<unsigned char>(special)] = true;
    }
}

void CellSplitter::StartRow() {
    state = State::CellBegins;
    position = 0;
    hasQuotes = false;
    cells.clear();
}

CellSplitter::Outcome CellSplitter::Continue(std::string_view row, bool inputEnds) {
    while (true) {
        const std::optional<Outcome> outcome = Step(row, inputEnds);
        if (cells.size() > maxCells) return Outcome::TooManyCells;
        if (outcome) return *outcome;
    }
}

std::optional<CellSplitter::Outcome> CellSplitter::Step(std::string_view row, bool inputEnds) {
    switch (state) {
        case State::CellBegins:
            return BeginCell(row, inputEnds);
        case State::InText:
            return PassText(row, inputEnds);
        case State::InQuotes:
            return PassQuotedText(row, inputEnds);
        case State::BehindQuote:
            return PassClosingQuote(row, inputEnds);
    }
    return Outcome::RowEnds;
}

std::optional<CellSplitter::Outcome> CellSplitter::BeginCell(std::string_view row, bool inputEnds) {
    doubledQuotes = false;
    if (position == row.size() && !inputEnds) return Outcome::NeedsMore;
    if (position < row.size() && row[position] == '"') {
        hasQuotes = true;
        quotePosition = position;
        ++position;
        state = State::InQuotes;
    } else {
        state = State::InText;
    }
    cellBegin = position;
    return std::nullopt;
}

std::optional<CellSplitter::Outcome> CellSplitter::PassText(std::string_view row, bool inputEnds) {
    while (position < row.size() && !endsText[static_cast<unsigned char>(row[position])]) {
        ++position;
    }
    if (position == row.size()) {
        return inputEnds ? EndRow(position, 0) : Outcome::NeedsMore;
    }
    const std::size_t lineEnd = LengthOfLineEnd(row, position);
    if (lineEnd > 0) return EndRow(position, lineEnd);
    if (row[position] == '"') return Outcome::StrayQuote;
    EndCell(position);
    return std::nullopt;
}

std::optional<CellSplitter::Outcome> CellSplitter::PassQuotedText(std::string_view row, bool inputEnds) {
    const std::size_t quote = row.find('"', position);
    if (quote == std::string_view::npos) {
        position = row.size();
        return inputEnds ? Outcome::UnclosedQuote : Outcome::NeedsMore;
    }
    position = quote + 1;
    state = State::BehindQuote;
    return std::nullopt;
}

std::optional<CellSplitter::Outcome> CellSplitter::PassClosingQuote(std::string_view row, bool inputEnds) {
    const std::size_t cellEnd = position - 1;
    if (position == row.size()) {
        return inputEnds ? EndRow(cellEnd, 0) : Outcome::NeedsMore;
    }
    const char character = row[position];
    if (character == '"') {
        doubledQuotes = true;
        ++position;
        state = State::InQuotes;
        return std::nullopt;
    }
    if (character == delimiter) {
        EndCell(cellEnd);
        return std::nullopt;
    }
    const std::size_t lineEnd = LengthOfLineEnd(row, position);
    return lineEnd > 0 ? EndRow(cellEnd, lineEnd) : Outcome::TextBehindQuote;
}

CellSplitter::Outcome CellSplitter::EndRow(std::size_t cellEnd, std::size_t lineEndBytes) {
    cells.push_back({cellBegin, cellEnd, doubledQuotes});
    position += lineEndBytes;
    return Outcome::RowEnds;
}

void CellSplitter::EndCell(std::size_t cellEnd) {
    cells.push_back({cellBegin, cellEnd, doubledQuotes});
    ++position;
    state = State::CellBegins;
}

}  // namespace nbscore

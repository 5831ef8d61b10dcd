#include "host/CsvReader.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "host/HostError.h"
#include "host/Utf8Check.h"

namespace nbscore {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

char RequireDelimiter(char delimiter) {
    const bool usable = delimiter > 0 && std::strchr("\"\r\n", delimiter) == nullptr;
    if (!usable) throw std::invalid_argument("the delimiter must be an ASCII character, no quote and no line break");
    return delimiter;
}

}  // namespace

CsvReader::CsvReader(std::istream& input, std::string sourceName, char delimiter)
    : buffer(input, std::move(sourceName)), splitter(RequireDelimiter(delimiter)) {}

bool CsvReader::ReadRow(std::vector<std::string_view>& cells) {
    cells.clear();
    buffer.Discard(rowBytes);
    rowBytes = 0;
    if (!started) PassByteOrderMark();
    if (buffer.GetBytes().empty() && !buffer.Extend()) return false;

    rowLine = nextLine;
    FindRow();
    rowBytes = splitter.GetPosition();
    nextLine = splitter.HasQuotes() ? GetLineOf(rowBytes) : rowLine + 1;
    for (const CellSplitter::Cell& cell : splitter.GetCells()) {
        cells.push_back(MakeText(cell));
    }
    return true;
}

void CsvReader::PassByteOrderMark() {
    started = true;
    while (buffer.GetBytes().size() < byteOrderMark.size() && buffer.Extend()) {
    }
    if (buffer.GetBytes().starts_with(byteOrderMark)) buffer.Discard(byteOrderMark.size());
}

void CsvReader::FindRow() {
    splitter.StartRow();
    checkedBytes = 0;
    while (true) {
        const CellSplitter::Outcome outcome = splitter.Continue(buffer.GetBytes(), buffer.IsAtEnd());
        CheckText(outcome);
        if (outcome == CellSplitter::Outcome::RowEnds) return;
        if (outcome != CellSplitter::Outcome::NeedsMore) RefuseStructure(outcome);
        buffer.Extend();
    }
}

/// Checks the text up to where the splitter is. Of several faults the first in the row is reported, wherever the
/// blocks that it came in happen to end.
void CsvReader::CheckText(CellSplitter::Outcome outcome) {
    const std::size_t reached = splitter.GetPosition();
    const Utf8Check check = CheckUtf8(buffer.GetBytes(), checkedBytes, std::min(reached, maxRowBytes));
    const bool awaitsRest =
        check.verdict == Utf8Check::Verdict::Incomplete && outcome == CellSplitter::Outcome::NeedsMore;
    if (check.verdict == Utf8Check::Verdict::Nul) Refuse(check.position, "a NUL byte stands in the text");
    if (check.verdict != Utf8Check::Verdict::Sound && !awaitsRest) {
        Refuse(check.position, "the text is not valid UTF-8");
    }
    checkedBytes = check.position;
    if (reached > maxRowBytes) RefuseLongRow();
}

void CsvReader::RefuseStructure(CellSplitter::Outcome outcome) const {
    switch (outcome) {
        case CellSplitter::Outcome::StrayQuote:
            Refuse(splitter.GetPosition(), "a quote stands inside a cell that does not begin with one");
        case CellSplitter::Outcome::TextBehindQuote:
            Refuse(splitter.GetPosition(), "text follows the closing quote of a cell");
        case CellSplitter::Outcome::UnclosedQuote:
            Refuse(splitter.GetQuotePosition(), "the quote that opens here is never closed");
        default:
            Refuse(0, "the row has more than " + std::to_string(CellSplitter::maxCells) + " cells");
    }
}

void CsvReader::RefuseLongRow() const {
    std::string problem = "the row is longer than " + std::to_string(maxRowBytes) + " bytes";
    if (splitter.IsInQuotes()) {
        problem += " (a quote opened in line " + std::to_string(GetLineOf(splitter.GetQuotePosition())) +
                   " and was not closed so far)";
    }
    Refuse(0, problem);
}

void CsvReader::Refuse(std::size_t position, const std::string& problem) const {
    throw CaseDataError(buffer.GetSourceName(), GetLineOf(position), problem);
}

std::uint64_t CsvReader::GetLineOf(std::size_t position) const {
    const std::string_view before = buffer.GetBytes().substr(0, position);
    return rowLine + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
}

std::string_view CsvReader::MakeText(const CellSplitter::Cell& cell) {
    char* const begin = buffer.GetMutableBytes() + cell.begin;
    if (!cell.doubledQuotes) return {begin, cell.end - cell.begin};
    // Doubled quotes are undoubled where they stand: the text only shrinks, and nobody reads these bytes again.
    char* write = begin;
    for (const char* read = begin; read < buffer.GetMutableBytes() + cell.end; ++read) {
        *write++ = *read;
        if (*read == '"') ++read;
    }
    return {begin, static_cast<std::size_t>(write - begin)};
}

}  // namespace nbscore

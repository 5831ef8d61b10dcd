#include "host/CsvRowReader.h"

#include <algorithm>
#include <utility>

#include "host/HostError.h"
#include "host/LineEnds.h"
#include "host/MarkFinder.h"
#include "host/TableBlockReader.h"
#include "host/Utf8Check.h"

namespace nbscore {
namespace {

constexpr std::size_t maxRowBytes = TableBlockReader::maxRowBytes;
constexpr char firstByteOfByteOrderMark = '\xEF';
/// Marks take several times the memory of the text. A longer block holds a single row.
constexpr std::size_t longestBlockOfPlainRows = 8 * TableBlockReader::pieceBytes;

}  // namespace

CsvRowReader::CsvRowReader(std::string sourceName, char cellDelimiter)
    : source(std::move(sourceName)), delimiter(cellDelimiter), splitter(cellDelimiter) {}

void CsvRowReader::Start(TableBlock& nextBlock) {
    block = &nextBlock;
    rowBegin = nextRowBegin = 0;
    nextLine = block->firstLine;
    const std::string_view bytes = block->GetBytes();
    const bool isSound = CheckUtf8(bytes, 0, bytes.size()).verdict == Utf8Check::Verdict::Sound;
    mayHoldByteOrderMarks = bytes.find(firstByteOfByteOrderMark) != std::string_view::npos;
    numMarks = nextMark = 0;
    canHavePlainRows = isSound && bytes.size() <= longestBlockOfPlainRows;
    if (canHavePlainRows) FindMarksOf(bytes);
}

void CsvRowReader::FindMarksOf(std::string_view bytes) {
    if (roomForMarks < bytes.size()) {
        marks = std::make_unique_for_overwrite<std::uint32_t[]>(bytes.size());
        roomForMarks = bytes.size();
    }
    numMarks = FindMarks(bytes, delimiter, marks.get());
}

bool CsvRowReader::ReadRow() {
    cells.clear();
    asWritten = {};
    rowBegin = nextRowBegin;
    if (rowBegin >= block->size) return false;
    rowLine = nextLine;
    if (!canHavePlainRows || !ReadPlainRow()) ReadQuotedRow();
    return true;
}

/// A row without quotes, in a block of sound text. False, having found nothing, when the row is another one or too
/// long.
bool CsvRowReader::ReadPlainRow() {
    const std::string_view bytes = block->GetBytes();
    std::size_t cellBegin = rowBegin;
    for (; nextMark < numMarks && cells.size() < CellSplitter::maxCells; ++nextMark) {
        const std::size_t mark = marks[nextMark];
        const char character = bytes[mark];
        if (character == delimiter) {
            cells.push_back(bytes.substr(cellBegin, mark - cellBegin));
            cellBegin = mark + 1;
        } else if (character == '"') {
            return false;
        } else {
            const std::size_t lineEnd = LengthOfLineEnd(bytes, mark);
            EndPlainRow(cellBegin, mark, mark + lineEnd);
            nextMark += lineEnd;  // both bytes of a CRLF are marks
            break;
        }
    }
    if (nextRowBegin == rowBegin) {
        if (nextMark < numMarks || cells.size() == CellSplitter::maxCells) return false;
        EndPlainRow(cellBegin, bytes.size(), bytes.size());
    }
    if (nextRowBegin - rowBegin > maxRowBytes) return false;
    if (mayHoldByteOrderMarks) asWritten = {};
    return true;
}

void CsvRowReader::EndPlainRow(std::size_t cellBegin, std::size_t cellEnd, std::size_t nextRow) {
    const std::string_view bytes = block->GetBytes();
    cells.push_back(bytes.substr(cellBegin, cellEnd - cellBegin));
    asWritten = bytes.substr(rowBegin, cellEnd - rowBegin);
    nextRowBegin = nextRow;
    nextLine = rowLine + 1;
}

void CsvRowReader::ReadQuotedRow() {
    cells.clear();
    asWritten = {};
    splitter.StartRow();
    const CellSplitter::Outcome outcome = splitter.Continue(GetRest(), true);
    CheckText();
    if (outcome != CellSplitter::Outcome::RowEnds) RefuseStructure(outcome);
    nextRowBegin = rowBegin + splitter.GetPosition();
    nextLine = GetLineOf(splitter.GetPosition());
    for (const CellSplitter::Cell& cell : splitter.GetCells())
        cells.push_back(MakeText(cell));
    while (nextMark < numMarks && marks[nextMark] < nextRowBegin)
        ++nextMark;
}

/// Checks the text up to where the splitter is. Of several faults the first in the row is reported.
void CsvRowReader::CheckText() const {
    const std::size_t reached = splitter.GetPosition();
    const Utf8Check check = CheckUtf8(GetRest(), 0, std::min(reached, maxRowBytes));
    if (check.verdict == Utf8Check::Verdict::Nul) Refuse(check.position, "a NUL byte stands in the text");
    if (check.verdict != Utf8Check::Verdict::Sound) Refuse(check.position, "the text is not valid UTF-8");
    if (reached > maxRowBytes) RefuseLongRow();
}

void CsvRowReader::RefuseStructure(CellSplitter::Outcome outcome) const {
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

void CsvRowReader::RefuseLongRow() const {
    std::string problem = "the row is longer than " + std::to_string(maxRowBytes) + " bytes";
    if (splitter.IsInQuotes()) {
        problem += " (a quote opened in line " + std::to_string(GetLineOf(splitter.GetQuotePosition())) +
                   " and was not closed so far)";
    }
    Refuse(0, problem);
}

void CsvRowReader::Refuse(std::size_t position, const std::string& problem) const {
    throw CaseDataError(source, GetLineOf(position), problem);
}

std::uint64_t CsvRowReader::GetLineOf(std::size_t position) const {
    return rowLine + CountLineEnds(GetRest().substr(0, position));
}

std::string_view CsvRowReader::MakeText(const CellSplitter::Cell& cell) {
    char* const begin = block->room.data() + rowBegin + cell.begin;
    if (!cell.doubledQuotes) return {begin, cell.end - cell.begin};
    // Doubled quotes are undoubled where they stand: the text only shrinks, and nobody reads these bytes again.
    char* write = begin;
    for (const char* read = begin; read < block->room.data() + rowBegin + cell.end; ++read) {
        *write++ = *read;
        if (*read == '"') ++read;
    }
    return {begin, static_cast<std::size_t>(write - begin)};
}

}  // namespace nbscore

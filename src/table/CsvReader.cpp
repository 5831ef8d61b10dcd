#include "table/CsvReader.h"

#include <algorithm>
#include <utility>

#include "output/HostError.h"
#include "table/DelimiterHint.h"

namespace nbscore {
namespace {

constexpr std::size_t maxRowBytes = TableBlockReader::maxRowBytes;
constexpr char firstByteOfByteOrderMark = '\xEF';

std::string_view Between(std::string_view bytes, std::size_t begin, std::size_t end) {
    return {bytes.data() + begin, end - begin};
}

}  // namespace

CsvRowReader::CsvRowReader(std::string sourceName, char cellDelimiter)
    : source(std::move(sourceName)),
      scanner(cellDelimiter),
      rowEnds(std::make_unique_for_overwrite<std::uint32_t[]>(CsvScanner::roomForMarks)) {}

void CsvRowReader::Start(TableBlock& nextBlock) {
    block = &nextBlock;
    numMarks = endOfCells = foundLast = 0;
    numRowEnds = nextRowEnd = 0;
    ForgetRows();
    scanner.Start();
    rowBegin = nextRowBegin = 0;
    nextLine = block->firstLine;
    const std::string_view bytes = block->GetBytes();
    soundText = CheckUtf8(bytes, 0, bytes.size());
    mayHoldByteOrderMarks = bytes.find(firstByteOfByteOrderMark) != std::string_view::npos;
}

bool CsvRowReader::ReadRowBehind() {
    texts.clear();
    asWritten = {};
    rowCells = endOfCells;
    rowBegin = nextRowBegin;
    if (rowBegin >= block->size) return false;
    rowLine = nextLine;
    beforeRows.push_back(static_cast<std::uint32_t>(rowBegin) - 1);
    while (nextRowEnd == numRowEnds) {
        if (numMarks - rowCells > maxCells) RefuseTooManyCells();
        if (FindMoreMarks()) continue;
        EndLastRow();
        return true;
    }
    const std::size_t last = foundLast + rowEnds[nextRowEnd++];
    endOfCells = last + 1;
    EndRow(marks[last], marks[last] + LengthOfMark(block->GetBytes(), marks[last]));
    return true;
}

std::size_t CsvRowReader::ReadPlainRowsBehind(std::size_t most, std::size_t numCells,
                                              std::vector<std::string_view>& rowsAsWritten,
                                              std::vector<std::uint64_t>& lines) {
    if (scanner.HasQuotes()) return 0;
    const std::string_view bytes = block->GetBytes();
    std::size_t count = 0;
    for (; count < most && nextRowEnd < numRowEnds; ++count, ++nextRowEnd) {
        const std::size_t last = foundLast + rowEnds[nextRowEnd];
        const std::size_t nextRow = marks[last] + LengthOfMark(bytes, marks[last]);
        const bool isTooLong = nextRow - nextRowBegin > maxRowBytes;
        if (last + 1 - endOfCells != numCells || nextRow > soundText.position || isTooLong) break;
        rowCells = endOfCells;
        endOfCells = last + 1;
        rowBegin = nextRowBegin;
        nextRowBegin = nextRow;
        beforeRows.push_back(static_cast<std::uint32_t>(rowBegin) - 1);
        asWritten = mayHoldByteOrderMarks ? std::string_view() : Between(bytes, rowBegin, marks[last]);
        rowsAsWritten.push_back(asWritten);
        rowLine = nextLine++;
        lines.push_back(rowLine);
    }
    if (count > 0) texts.clear();
    return count;
}

/// False at the end of the block, and where it has a fault.
bool CsvRowReader::FindMoreMarks() {
    // Those of rows that are forgotten make room.
    std::copy(marks.data() + keptCells, marks.data() + numMarks, marks.data());
    numMarks -= keptCells;
    rowCells -= keptCells;
    endOfCells -= keptCells;
    keptCells = 0;
    foundLast = numMarks;
    numRowEnds = nextRowEnd = 0;
    if (marks.size() < numMarks + CsvScanner::roomForMarks) marks.resize(2 * numMarks + CsvScanner::roomForMarks);
    const std::string_view bytes = block->GetBytes();
    while (numMarks == foundLast && scanner.GetPosition() < bytes.size() &&
           scanner.GetFault() == CsvScanner::Fault::None) {
        const CsvScanner::Found found = scanner.FindMarks(bytes, marks.data() + numMarks, rowEnds.get());
        numMarks += found.marks;
        numRowEnds = found.rowEnds;
    }
    return numMarks > foundLast;
}

/// The last row of a table may end without a line end; any other one that does not end has a fault.
void CsvRowReader::EndLastRow() {
    const std::size_t cellBegin = numMarks == rowCells ? rowBegin : marks[numMarks - 1] + 1;
    const std::size_t reached = scanner.GetPosition();
    const bool isInQuotes = scanner.IsInQuotes();
    if (!isInQuotes && scanner.GetFault() == CsvScanner::Fault::None) {
        marks[numMarks++] = static_cast<std::uint32_t>(reached);
        endOfCells = numMarks;
        EndRow(reached, reached);
        return;
    }
    CheckText(reached, isInQuotes ? std::optional(cellBegin) : std::nullopt);
    if (isInQuotes) Refuse(cellBegin, "the quote that opens here is never closed");
    if (scanner.GetFault() == CsvScanner::Fault::StrayQuote) {
        Refuse(reached, "a quote stands inside a cell that does not begin with one");
    }
    const std::string hint = rowLine == 1 ? SuggestDelimiter(block->GetBytes()[reached]) : std::string();
    Refuse(reached, "text follows the closing quote of a cell" + (hint.empty() ? "" : "; the columns " + hint));
}

void CsvRowReader::EndRow(std::size_t cellsEnd, std::size_t nextRow) {
    nextRowBegin = nextRow;
    nextLine = rowLine + 1;
    if (CountCells() > maxCells) RefuseTooManyCells();
    if (nextRow > soundText.position || nextRow - rowBegin > maxRowBytes) CheckText(nextRow);
    if (!mayHoldByteOrderMarks) asWritten = Between(block->GetBytes(), rowBegin, cellsEnd);
    if (!scanner.HasQuotes()) return;
    if (scanner.HasLineEndsInQuotes()) nextLine = GetLineOf(nextRow);
    TakeQuotesOff();
}

/// Of the last row, and of those before it where that was not done.
void CsvRowReader::ListBeforeCells() {
    std::size_t row = beforeCells.empty() ? 0 : beforeRows.size() - 1;
    for (std::size_t cell = keptCells + beforeCells.size(); cell < endOfCells; ++cell) {
        const bool beginsRow = row < beforeRows.size() && beforeRows[row] + 1 <= marks[cell];
        beforeCells.push_back(beginsRow ? beforeRows[row++] : marks[cell - 1]);
    }
}

void CsvRowReader::TakeQuotesOff() {
    ListBeforeCells();
    for (std::size_t cell = rowCells; cell < endOfCells; ++cell) {
        std::uint32_t& before = beforeCells[cell - keptCells];
        const std::string_view written = Between(block->GetBytes(), before + 1, marks[cell]);
        if (!written.starts_with('"')) continue;
        asWritten = {};
        const std::string_view text = TakeQuotesOff(written);
        before = static_cast<std::uint32_t>(text.data() - block->room.data()) - 1;
        marks[cell] = before + 1 + static_cast<std::uint32_t>(text.size());
    }
}

std::string_view CsvRowReader::TakeQuotesOff(std::string_view cell) {
    const std::string_view text = cell.substr(1, cell.size() - 2);
    const std::size_t quote = text.find('"');
    if (quote == std::string_view::npos) return text;
    // One of two quotes is left where they stand: the text only shrinks, and these bytes are not read again.
    char* const begin = block->room.data() + (text.data() - block->room.data());
    char* write = begin + quote;
    for (const char* read = write; read < begin + text.size(); ++read) {
        *write++ = *read;
        if (*read == '"') ++read;
    }
    return {begin, static_cast<std::size_t>(write - begin)};
}

/// Checks the row up to there. Of several faults the first in the row is reported.
/// @param openQuote where a quote opens that was not closed.
void CsvRowReader::CheckText(std::size_t reached, std::optional<std::size_t> openQuote) const {
    const bool isTooLong = reached - rowBegin > maxRowBytes;
    const std::size_t checked = isTooLong ? rowBegin + maxRowBytes : reached;
    if (soundText.verdict != Utf8Check::Verdict::Sound && soundText.position < checked) {
        const bool isNul = soundText.verdict == Utf8Check::Verdict::Nul;
        Refuse(soundText.position, isNul ? "a NUL byte stands in the text" : "the text is not valid UTF-8");
    }
    if (!isTooLong) return;
    std::string problem = "the row is longer than " + std::to_string(maxRowBytes) + " bytes";
    if (openQuote) {
        problem += " (a quote opened in line " + std::to_string(GetLineOf(*openQuote)) + " and was not closed so far)";
    }
    Refuse(rowBegin, problem);
}

void CsvRowReader::RefuseTooManyCells() const {
    // What is wrong in front of the end of the first cell that is too many goes before.
    const std::size_t reached = marks[rowCells + maxCells];
    const std::string_view bytes = block->GetBytes();
    CheckText(reached == bytes.size() ? reached : reached + LengthOfMark(bytes, reached));
    Refuse(rowBegin, "the row has more than " + std::to_string(maxCells) + " cells");
}

void CsvRowReader::Refuse(std::size_t position, const std::string& problem) const {
    throw CaseDataError(source, GetLineOf(position), problem);
}

std::span<const std::string_view> CsvRowReader::GetCells() {
    if (texts.empty() && CountCells() > 0) GetRows(CountCells(), beforeRows.size() - 1, rowCells).ListCells(0, texts);
    return texts;
}

/// @param firstRow among those that are kept. @param firstCell of it, among the marks.
CsvRows CsvRowReader::GetRows(std::size_t numColumns, std::size_t firstRow, std::size_t firstCell) const {
    return {.bytes = block->room.data(),
            .numColumns = numColumns,
            .beforeRows = beforeRows.data() + firstRow,
            .before = beforeCells.empty() ? nullptr : beforeCells.data() + (firstCell - keptCells),
            .ends = marks.data() + firstCell};
}

std::uint64_t CsvRowReader::GetLineOf(std::size_t position) const {
    return rowLine + CountLineEnds(Between(block->GetBytes(), rowBegin, position));
}

}  // namespace nbscore

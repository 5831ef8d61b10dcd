#include "table/CsvReader.h"

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
      delimiter(cellDelimiter),
      scanner(cellDelimiter),
      marks(std::make_unique_for_overwrite<std::uint32_t[]>(CsvScanner::roomForMarks)) {}

void CsvRowReader::Start(TableBlock& nextBlock) {
    block = &nextBlock;
    ForgetRows();
    scanner.Start();
    numMarks = nextMark = 0;
    rowBegin = nextRowBegin = 0;
    nextLine = block->firstLine;
    const std::string_view bytes = block->GetBytes();
    soundText = CheckUtf8(bytes, 0, bytes.size());
    mayHoldByteOrderMarks = bytes.find(firstByteOfByteOrderMark) != std::string_view::npos;
}

bool CsvRowReader::ReadRowBehind() {
    rowCells = endOfCells;
    asWritten = {};
    rowBegin = nextRowBegin;
    if (rowBegin >= block->size) return false;
    rowLine = nextLine;
    const char* const bytes = block->room.data();
    std::size_t cellBegin = rowBegin;
    do {
        for (std::size_t i = nextMark; i < numMarks; ++i) {
            const std::size_t mark = marks[i];
            AddCell(bytes + cellBegin, mark - cellBegin);
            if (bytes[mark] != delimiter) {
                nextMark = i + 1;
                EndRow(mark, mark + LengthOfMark(block->GetBytes(), mark));
                return true;
            }
            cellBegin = mark + 1;
        }
        if (GetCells().size() > maxCells) RefuseTooManyCells();
    } while (FindMoreMarks());
    EndLastRow(cellBegin);
    return true;
}

/// False at the end of the block, and where it has a fault.
bool CsvRowReader::FindMoreMarks() {
    const std::string_view bytes = block->GetBytes();
    nextMark = numMarks = 0;
    while (numMarks == 0 && scanner.GetPosition() < bytes.size() && scanner.GetFault() == CsvScanner::Fault::None)
        numMarks = scanner.FindMarks(bytes, marks.get());
    return numMarks > 0;
}

/// The last row of a table may end without a line end; any other one that does not end has a fault.
void CsvRowReader::EndLastRow(std::size_t cellBegin) {
    const std::size_t reached = scanner.GetPosition();
    const bool isInQuotes = scanner.IsInQuotes();
    if (!isInQuotes && scanner.GetFault() == CsvScanner::Fault::None) {
        AddCell(block->GetBytes().data() + cellBegin, reached - cellBegin);
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
    if (GetCells().size() > maxCells) RefuseTooManyCells();
    if (nextRow > soundText.position || nextRow - rowBegin > maxRowBytes) CheckText(nextRow);
    if (!mayHoldByteOrderMarks) asWritten = Between(block->GetBytes(), rowBegin, cellsEnd);
    if (!scanner.HasQuotes()) return;
    if (scanner.HasLineEndsInQuotes()) nextLine = GetLineOf(nextRow);
    TakeQuotesOff();
}

void CsvRowReader::TakeQuotesOff() {
    for (std::string_view& cell : std::span(cells).subspan(rowCells, endOfCells - rowCells)) {
        if (!cell.starts_with('"')) continue;
        asWritten = {};
        cell = TakeQuotesOff(cell);
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
    const std::string_view tooMany = GetCells()[maxCells];
    const auto reached = static_cast<std::size_t>(tooMany.data() + tooMany.size() - block->room.data());
    const std::string_view bytes = block->GetBytes();
    CheckText(reached == bytes.size() ? reached : reached + LengthOfMark(bytes, reached));
    Refuse(rowBegin, "the row has more than " + std::to_string(maxCells) + " cells");
}

void CsvRowReader::Refuse(std::size_t position, const std::string& problem) const {
    throw CaseDataError(source, GetLineOf(position), problem);
}

std::uint64_t CsvRowReader::GetLineOf(std::size_t position) const {
    return rowLine + CountLineEnds(Between(block->GetBytes(), rowBegin, position));
}

}  // namespace nbscore

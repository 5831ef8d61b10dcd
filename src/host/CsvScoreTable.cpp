#include "host/CsvScoreTable.h"

#include <string_view>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "host/HostError.h"
#include "host/MessageText.h"

namespace nbscore {
namespace {

/// Nothing keeps a delimiter from being one of these.
constexpr std::string_view charactersOfNumbers = "+-.0123456789aefin";

}  // namespace

CsvScoreTable::CsvScoreTable(const std::vector<std::string>& header, const ScoreWriterOptions& writerOptions)
    : delimiter(writerOptions.delimiter),
      hasInputColumns(!writerOptions.onlyScores && !header.empty()),
      prefix(writerOptions.prefix),
      numbersNeedQuotes(charactersOfNumbers.find(delimiter) != std::string_view::npos) {
    if (hasInputColumns) columnNames = header;
    inputColumns = columnNames.size();
}

void CsvScoreTable::AddColumn(const std::string& name) {
    columnNames.push_back(prefix + name);
}

void CsvScoreTable::RequireDistinctNames(const std::string& sourceName) const {
    SeededSet<std::string_view> taken;
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        const bool isNew = taken.insert(columnNames[i]).second;
        if (isNew || i < inputColumns) continue;
        throw CaseDataError(sourceName, 1,
                            "the column " + QuoteForMessage(columnNames[i]) +
                                ", which scoring adds, is in the table already: choose another prefix for the "
                                "added columns (--prefix)");
    }
}

void CsvScoreTable::AppendHeader(std::string& text) const {
    CsvRow row(text, delimiter);
    for (const std::string& name : columnNames) {
        row.Add(name);
    }
    row.End();
}

void CsvScoreTable::AppendInput(std::string& text, const InputRow& input) const {
    if (!hasInputColumns) return;
    if (!input.asWritten.empty()) {
        text += input.asWritten;
        return;
    }
    CsvRow row(text, delimiter);
    for (const std::string_view cell : input.cells) {
        row.Add(cell);
    }
    const bool isWholeRow = columnNames.size() == inputColumns;
    if (isWholeRow) row.QuoteIfEmpty();
}

void CsvScoreTable::AddNumber(CsvRow& row, double number) const {
    if (!numbersNeedQuotes) {
        row.AddPlain([number](std::string& text) {
            if (!MCMV::IsMissing(number)) AppendNumber(text, number);
        });
        return;
    }
    row.Add(MCMV::IsMissing(number) ? std::string() : FormatNumber(number));
}

}  // namespace nbscore

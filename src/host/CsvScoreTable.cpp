#include "host/CsvScoreTable.h"

#include <unordered_set>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "host/HostError.h"
#include "host/MessageText.h"

namespace nbscore {

CsvScoreTable::CsvScoreTable(const std::vector<std::string>& header, const ScoreWriterOptions& writerOptions)
    : delimiter(writerOptions.delimiter), hasInputColumns(!writerOptions.onlyScores), prefix(writerOptions.prefix) {
    if (hasInputColumns) columnNames = header;
    inputColumns = columnNames.size();
}

void CsvScoreTable::AddColumn(const std::string& name) {
    columnNames.push_back(prefix + name);
}

void CsvScoreTable::RequireDistinctNames(const std::string& sourceName) const {
    std::unordered_set<std::string_view> taken;
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

CsvRow CsvScoreTable::BeginRow(std::string& text, const std::vector<std::string_view>& cells) const {
    CsvRow row(text, delimiter);
    if (hasInputColumns) {
        for (const std::string_view cell : cells) {
            row.Add(cell);
        }
    }
    return row;
}

/// Numbers pass through the same rule as texts, because nothing keeps a delimiter from being a character that numbers
/// are written with.
void CsvScoreTable::AddNumber(CsvRow& row, double number) {
    numberText.clear();
    if (!MCMV::IsMissing(number)) AppendNumber(numberText, number);
    row.Add(numberText);
}

}  // namespace nbscore

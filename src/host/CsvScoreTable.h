#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/CsvRow.h"
#include "host/InputRow.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// The shape of a scored table in CSV: the input's columns, unless they are left out, and then those that scoring adds.
class CsvScoreTable {
public:
    /// @param header the input's column names.
    CsvScoreTable(const std::vector<std::string>& header, const ScoreWriterOptions& writerOptions);

    /// Adds a column, its name under the prefix.
    void AddColumn(const std::string& name);
    /// Throws CaseDataError, naming the column and the way out (a prefix), when an added column's name is taken.
    void RequireDistinctNames(const std::string& sourceName) const;

    void AppendHeader(std::string& text) const;
    /// Appends the input's cells, unless they are left out. The added columns' cells follow, by BeginScores, then End.
    void AppendInput(std::string& text, const InputRow& input) const;
    CsvRow BeginScores(std::string& text) const { return {text, delimiter, hasInputColumns}; }
    /// Adds a number's cell; that of the system-missing number is empty.
    void AddNumber(CsvRow& row, double number) const;

private:
    char delimiter;
    bool hasInputColumns;
    std::string prefix;
    std::vector<std::string> columnNames;
    std::size_t inputColumns = 0;
    bool numbersNeedQuotes;
};

}  // namespace nbscore

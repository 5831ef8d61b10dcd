#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/CsvRow.h"
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
    /// Begins a row with the input's cells; the added columns' cells follow, then End.
    CsvRow BeginRow(std::string& text, const std::vector<std::string_view>& cells) const;
    /// Adds a number's cell; that of the system-missing number is empty.
    void AddNumber(CsvRow& row, double number);

private:
    char delimiter;
    bool hasInputColumns;
    std::string prefix;
    std::vector<std::string> columnNames;
    std::size_t inputColumns = 0;
    std::string numberText;  // kept between cells so that it is allocated once
};

}  // namespace nbscore

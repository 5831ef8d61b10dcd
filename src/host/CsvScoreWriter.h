#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/CategoryProbabilities.h"
#include "host/CsvRow.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// Writes classified cases as CSV: the input's columns, then `predicted_<target>`, `confidence` and
/// `probability_<category>` for each target category.
class CsvScoreWriter : public ScoreWriter {
public:
    /// @param target borrowed.
    /// @param header the input's column names. Throws CaseDataError when an added column's name is taken.
    CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header, const std::string& sourceName,
                   const ScoreWriterOptions& options);

    void AppendHeader(std::string& text) override;
    void AppendCase(std::string& text, const std::vector<std::string_view>& cells, const ScoreResult& result) override;

private:
    void AddColumn(const std::string& name);
    void RequireDistinctNames(const std::string& sourceName) const;
    void AddNumber(CsvRow& row, double number);

    ScoreWriterOptions options;
    CategoryProbabilities probabilities;
    std::vector<std::string> columnNames;
    std::size_t inputColumns = 0;
    std::string numberText;  // kept between cases so that it is allocated once
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "table/AddedColumns.h"
#include "table/ScoreWriter.h"

namespace nbscore {

/// Writes scored cases as CSV: the input's columns, unless they are left out, and then those that scoring adds.
class CsvScoreWriter : public ScoreWriter {
public:
    /// For a single classifier. ListAddedColumns says which columns are added for a model.
    /// @param header the input's column names. Throws CaseDataError, naming the column and the way out (a prefix), when
    ///     an added column's name is taken.
    CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header, const std::string& sourceName,
                   const ScoreWriterOptions& options);

    /// For a single classifier whose document names the columns itself. The rest as above.
    CsvScoreWriter(const std::vector<OutputColumn>& outputs, const std::vector<std::string>& header,
                   const std::string& sourceName, const ScoreWriterOptions& options);

    /// For a set of sub-models. Where a case has a row for each, one without sub-models has no row.
    /// @param names of the sub-models. The rest as above.
    CsvScoreWriter(const std::vector<std::string>& names, const std::vector<std::string>& header,
                   const std::string& sourceName, const ScoreWriterOptions& options);

    std::unique_ptr<ScoreWriter> Copy() const override { return std::make_unique<CsvScoreWriter>(*this); }
    void AppendHeader(std::string& text) const override;
    void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) override;
    bool HasScoresBehindInput() const override { return !hasRowForEachSubModel; }
    void AppendInput(std::string& text, const InputRow& input) const override;
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    CsvScoreWriter(const std::vector<std::string>& header, const ScoreWriterOptions& options);
    void AddColumns(std::vector<AddedColumn> added, const std::string& sourceName);
    void RequireDistinctNames(const std::string& sourceName) const;
    void AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown) const;

    char delimiter;
    bool hasInputColumns;
    bool numbersNeedQuotes;
    bool hasRowForEachSubModel = false;
    std::string prefix;
    /// The input's, as far as they are written, and those that are added.
    std::vector<std::string> columnNames;
    std::vector<AddedColumn> columns;
    /// The sub-models' labels, in quotes where they need them.
    std::vector<std::string> labelCells;
    SubModelRanking ranking;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "table/AddedColumns.h"
#include "table/AssessmentTexts.h"
#include "table/CsvText.h"
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
    /// Three cells for each of the reasons that are asked for; empty ones where the case has fewer.
    void BeginReasons(std::string&) const override {}
    void AppendReasonField(std::string& text, std::size_t number, std::string_view predictor) const override;
    void AppendReasonValue(std::string& text, std::string_view value) const override;
    void AppendReasonWeight(std::string& text, double weight) const override;
    void EndReasons(std::string& text, std::size_t count) const override;
    void AppendEnd(std::string& text) const override { text += '\n'; }
    /// None for rows in which numbers need quotes, for sub-models in another order, and for reasons and a document's
    /// own columns.
    std::unique_ptr<CsvBatchWriter> MakeBatchWriter() const override;

private:
    /// Some columns that scoring adds, side by side and of the same content.
    struct Columns {
        AddedColumn::Content content;
        std::size_t first;
        std::size_t count;
    };

    CsvScoreWriter(const std::vector<std::string>& header, const ScoreWriterOptions& options);
    void AddColumns(const std::vector<AddedColumn>& added, const std::string& sourceName);
    void RequireDistinctNames(const std::string& sourceName) const;
    void AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown);
    void AddPrediction(CsvRow& row, const ScoredCase& scored);

    char delimiter;
    bool hasInputColumns;
    bool numbersNeedQuotes;
    bool hasRowForEachSubModel = false;
    std::string prefix;
    /// How many reasons a case has cells for.
    std::size_t numReasons;
    /// The input's, as far as they are written, and those that are added, of reasons last.
    std::vector<std::string> columnNames;
    std::vector<Columns> columns;
    std::size_t numAddedColumns = 0;
    /// The sub-models' labels, in quotes where they need them.
    std::vector<std::string> labelCells;
    /// What is written for each predicted category that was met so far.
    std::vector<std::optional<std::string>> predictionCells;
    AssessmentTexts assessmentTexts;
    SubModelRanking ranking;
};

}  // namespace nbscore

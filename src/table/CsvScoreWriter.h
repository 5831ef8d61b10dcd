#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "table/AssessmentTexts.h"
#include "table/CsvText.h"
#include "table/ScoreWriter.h"

namespace nbscore {

/// Writes scored cases as CSV: the input's columns, unless they are left out, and then those that scoring adds.
class CsvScoreWriter : public ScoreWriter {
public:
    /// For a single classifier: `predicted_<target>`, `confidence` and `probability_<category>` for each target category;
    /// behind them, where reasons are asked for, `reason_1_field`, `reason_1_value`, `reason_1_weight`, `reason_2_field`
    /// and so on.
    /// @param header the input's column names. Throws CaseDataError, naming the column and the way out (a prefix), when
    ///     an added column's name is taken.
    CsvScoreWriter(const ScoreDictVar& target, const std::vector<std::string>& header, const std::string& sourceName,
                   const ScoreWriterOptions& options);

    /// For a single classifier whose document names the columns itself. The rest as above.
    CsvScoreWriter(const std::vector<OutputColumn>& outputs, const std::vector<std::string>& header,
                   const std::string& sourceName, const ScoreWriterOptions& options);

    /// For a set of sub-models: `score_<label>` for each (LabelSubModels); or of the best ones `best_1_model`,
    /// `best_1_score`, `best_2_model` and so on; or a row for each case and sub-model with `model` (the label), `score`,
    /// `assessment_mean` and `assessment_std_dev`, so that a case without sub-models has no row.
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
    void AppendReasons(std::string& text, std::span<const WrittenReason> reasons) const override;
    void AppendEnd(std::string& text) const override { text += '\n'; }
    /// None for rows in which numbers need quotes, for sub-models in another order, and for reasons and a document's
    /// own columns.
    std::unique_ptr<CsvBatchWriter> MakeBatchWriter() const override;

private:
    enum class Content { Prediction, Posterior, Output, Label, Score, Assessment };

    /// Some columns that scoring adds, side by side and of the same content.
    struct Columns {
        Content content;
        /// Which one is the first: of the outputs, or of the sub-models that a row shows. Of posterior probabilities 0
        /// is the confidence, and behind it stand those of the target's categories. Of assessments 0 is the mean, 1 the
        /// standard deviation; both are always shown.
        std::size_t first;
        std::size_t count;
    };

    CsvScoreWriter(const std::vector<std::string>& header, const ScoreWriterOptions& options);
    void AddColumn(const std::string& name, Content content, std::size_t number = 0);
    void AddReasonColumns(const ReasonOptions& reasons);
    void RequireDistinctNames(const std::string& sourceName) const;
    void AppendRow(std::string& text, const ScoredCase& scored, std::span<const std::size_t> shown);
    void AddPrediction(CsvRow& row, const ScoredCase& scored);

    char delimiter;
    bool hasInputColumns;
    bool numbersNeedQuotes;
    bool hasRowForEachSubModel = false;
    std::string prefix;
    /// The input's, as far as they are written, and those that are added, of reasons last.
    std::vector<std::string> columnNames;
    std::vector<Columns> columns;
    /// With those of reasons.
    std::size_t numAddedColumns = 0;
    /// How many reasons a case has cells for.
    std::size_t numReasons = 0;
    /// The sub-models' labels, in quotes where they need them.
    std::vector<std::string> labelCells;
    /// What is written for each predicted category that was met so far.
    std::vector<std::optional<std::string>> predictionCells;
    AssessmentTexts assessmentTexts;
    SubModelRanking ranking;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"

namespace nbscore {

enum class ScoreFormat { Csv, JsonLines };

/// How the scores of a set of sub-models are written; for a single classifier it does nothing.
struct SubModelOptions {
    /// A row for each case and sub-model instead of a column for each sub-model (CSV).
    bool longRows = false;
    /// Only this many of each case's scores, the highest first; with nothing all, in the model's order.
    std::optional<std::size_t> best;
};

/// How scored cases are written. What only a table of columns can have does nothing for JSON lines.
struct ScoreWriterOptions {
    ScoreFormat format = ScoreFormat::Csv;
    /// Between the cells of a CSV row.
    char delimiter = ',';
    /// Leave the input's own columns out (CSV; JSON lines never have them).
    bool onlyScores = false;
    /// Only the prediction: no confidence, no probabilities; of sub-models the scores without assessment figures.
    bool predictionOnly = false;
    /// Put in front of the name of every column that scoring adds (CSV; the keys of JSON lines are fixed).
    std::string prefix;
    SubModelOptions subModels;
};

/// Writes scored cases in one output format, as text that the caller passes on. Used by one thread.
class ScoreWriter {
public:
    virtual ~ScoreWriter() = default;

    /// The same writer, for another thread.
    virtual std::unique_ptr<ScoreWriter> Copy() const = 0;

    /// Appends what stands before the first case (a header line, or nothing).
    virtual void AppendHeader(std::string& text) const = 0;
    /// Appends one case: its input cells and what scoring gave.
    virtual void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) = 0;

    /// Whether a case is its input cells and its scores behind them, which can then be appended one by one. The text of
    /// the scores depends on them alone, so that whoever meets the same scores again may keep it.
    virtual bool HasScoresBehindInput() const = 0;
    virtual void AppendInput(std::string& text, const InputRow& input) const = 0;
    virtual void AppendScores(std::string& text, const ScoredCase& scored) = 0;
};

/// The writer for a model's results in a format.
/// @param model borrowed by the writer and its copies; must be scorable, because a set of sub-models may be asked for
///     their names.
/// @param header the input's column names. Throws CaseDataError, naming the column and the way out (a prefix), when
///     a column that scoring adds has a name that the input has too; throws UnscorableModelError for a kind of
///     model whose results cannot be written.
std::unique_ptr<ScoreWriter> MakeScoreWriter(ScoreModel& model, const std::vector<std::string>& header,
                                             const std::string& sourceName, const ScoreWriterOptions& options);

}  // namespace nbscore

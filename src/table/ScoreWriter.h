#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreModel.h"
#include "table/CsvBatchWriter.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"
#include "table/TableOptions.h"

namespace nbscore {

/// Writes scored cases in one output format, as text that the caller passes on. Used by one thread.
class ScoreWriter {
public:
    virtual ~ScoreWriter() = default;

    /// The same writer, for another thread.
    virtual std::unique_ptr<ScoreWriter> Copy() const = 0;

    /// Appends what stands before the first case (a header line, or nothing).
    virtual void AppendHeader(std::string& text) const = 0;
    /// Appends one case, as far as there are no reasons: its input cells and what scoring gave.
    virtual void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) = 0;

    /// Whether a case is written as its input cells followed by its scores, reasons and an end, which can then be
    /// appended separately. The text of the scores depends on the scores alone, so that it can be kept for equal ones.
    virtual bool HasScoresBehindInput() const = 0;
    virtual void AppendInput(std::string& text, const InputRow& input) const = 0;
    virtual void AppendScores(std::string& text, const ScoredCase& scored) = 0;
    /// Only where the options ask for reasons: their beginning, for each its predictor, its value (empty where there is
    /// none) and its weight, and their end. All but the values depends on the scores alone.
    virtual void BeginReasons(std::string& text) const = 0;
    /// @param number the reason's, from 0.
    virtual void AppendReasonField(std::string& text, std::size_t number, std::string_view predictor) const = 0;
    virtual void AppendReasonValue(std::string& text, std::string_view value) const = 0;
    virtual void AppendReasonWeight(std::string& text, double weight) const = 0;
    /// @param count how many there were.
    virtual void EndReasons(std::string& text, std::size_t count) const = 0;
    virtual void AppendEnd(std::string& text) const = 0;

    /// A writer of many cases at once that writes the same, where each is written as it was read and has nothing behind
    /// it but its scores; null where there is none.
    virtual std::unique_ptr<CsvBatchWriter> MakeBatchWriter() const { return nullptr; }
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

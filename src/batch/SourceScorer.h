#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "batch/Column.h"
#include "batch/SourceRow.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// A column of a table, with the values that it holds.
struct SourceColumn {
    std::string_view name;
    /// Of codes and of truth values without the dictionary, which is made where one is needed.
    Column column;
    /// What codes stand for: numbers or texts, borrowed. Null for all other columns.
    const Column* values = nullptr;
};

/// What becomes of fields that a model needs and a table lacks.
enum class LackingFields {
    Refused,
    /// They are absent in every case.
    Absent
};

/// Scores the columns of a table with a model, many cases at once: columns are found by name, and the values of derived
/// fields computed from them, case by case. Answers are those of BatchScorer, and so of GetScore for the same values.
///
/// Holds only what does not change: any number of threads may use one.
class SourceScorer {
public:
    /// @param model borrowed, to outlive this, because its derived fields are computed by it. Throws as BatchScorer.
    explicit SourceScorer(const ScoreModel& model);
    ~SourceScorer();
    SourceScorer(SourceScorer&&) noexcept;

    /// What it scores with: categories, sub-models and predictors are told there.
    const BatchScorer& GetBatchScorer() const;
    /// The names of the fields that it looks for in a table.
    const std::vector<std::string>& GetFields() const;
    /// Whether it looks for a column of this name; all others are passed over.
    bool Reads(std::string_view name) const;

    /// Scores `cases` cases.
    /// @param table in any order; borrowed for the call. A number is taken among texts by its digits, a truth value as
    ///     "true" or "false" among texts and as 1 or 0 among numbers. Texts in a field of numbers are taken by the
    ///     standard's rule only: as the number that they hold, or as invalid.
    /// @param answers as BatchScorer takes them.
    /// Throws std::invalid_argument, with a sentence for people that names the column, for one that is missing, is
    /// there twice, cannot be read for so many cases, or holds texts where its field holds numbers or a code that is
    /// none.
    void Score(std::span<const SourceColumn> table, std::size_t cases, const AnswerColumns& answers,
               LackingFields lacking = LackingFields::Refused) const;

    /// What becomes of the answers of a table's cases, block by block.
    struct BlockAnswers {
        /// At least 1.
        std::size_t casesAtOnce;
        /// The room for the answers of so many cases.
        std::function<AnswerColumns(std::size_t cases)> makeRoom;
        /// Called when they are there.
        std::function<void(std::size_t cases)> take;
    };
    /// The same, with room for the answers of some cases at a time. When something is thrown, answers may have been
    /// taken already.
    void ScoreInBlocks(std::span<const SourceColumn> table, std::size_t cases, const BlockAnswers& blocks,
                       LackingFields lacking = LackingFields::Refused) const;

    /// A case to be set field by field and scored by itself, all its values missing. Its fields are those of
    /// GetFields(), at their positions there, and what derived inputs are computed from is among them: those are
    /// computed when the row is scored, where a field that they read was set since. A text in a field of numbers is
    /// refused (std::invalid_argument), except by the standard's rule. This must outlive the row.
    std::unique_ptr<SourceRow> MakeRow() const;

    /// The cases of a table one by one.
    class Cases;

private:
    struct Parts;

    std::unique_ptr<const Parts> parts;
};

/// A table's cases as records, which have no positions. Used by one thread.
class SourceScorer::Cases {
public:
    /// All is borrowed. Throws as Score.
    Cases(const SourceScorer& scorer, std::span<const SourceColumn> table, std::size_t cases, LackingFields lacking);
    ~Cases();

    /// The values of a case as they stand in the table, until the next call.
    const ScoreCaseRecord& Read(std::size_t entry);

private:
    class Reader;

    std::unique_ptr<Reader> reader;
};

}  // namespace nbscore

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/CaseFields.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"
#include "table/TableOptions.h"

namespace nbscore {

/// A cell of a row, and the number of its column, from 0.
struct PlacedCell {
    std::size_t column = 0;
    std::string_view text;
};

/// Turns the rows of a table into case records for one model.
///
/// CaseFields says which columns of a table are needed or used. An empty cell is an absent value. Cells of numeric
/// fields are read as numbers; a text that the field declares as a missing value is absent. Texts are taken as they
/// are. A model with output columns (ModelOutputs) gets texts that are no numbers, to treat them as invalid values.
class CaseBinder {
public:
    /// @param model borrowed, to outlive the binder.
    /// @param header the table's column names, from its first line. One of them may be empty. Throws CaseDataError for
    ///     a repeated name or a missing column.
    CaseBinder(const ScoreModel& model, const std::vector<std::string>& header, const std::string& sourceName,
               const CaseBinderOptions& options);

    /// The record of one row, valid until the next call. Throws CaseDataError naming line, column and text for a
    /// text that is no number, and naming the line for a row with too many or too few cells.
    const ScoreCaseRecord& Bind(std::span<const std::string_view> cells, std::uint64_t line);

    /// The same for a row given by its cells that are not empty; takes no time for the others. Of two cells of a column
    /// the later one counts. A binder is used for such rows alone or not at all.
    const ScoreCaseRecord& BindSparse(const std::vector<PlacedCell>& cells, std::uint64_t line);

    /// A field that the table has a column for.
    struct BoundColumn {
        std::size_t column;
        int position;
        bool numeric;
        const ScoreDictVar* var;
    };
    const std::vector<BoundColumn>& GetColumns() const { return columns; }
    /// What to say where columns lack and the header's seem to stand between other characters (SuggestDelimiter).
    const std::string& GetDelimiterHint() const { return delimiterHint; }
    /// Throws CaseDataError, naming the line, for a row with too many or too few cells.
    void RequireAllCells(std::size_t numCells, std::uint64_t line) const;
    /// The number of a cell of a numeric field that is not empty; nothing where it is absent, or a text that the model
    /// gets. Throws CaseDataError, naming line, column and text, for another text that is no number.
    std::optional<double> ReadNumberCell(const BoundColumn& column, std::string_view cell, std::uint64_t line) const;

private:
    class Record : public BaseCaseRecord {
    public:
        Record(const std::vector<std::string>& names, bool hasPositions)
            : BaseCaseRecord(names), isIndexed(hasPositions) {}
        bool IsIndexed() const override { return isIndexed; }

    private:
        bool isIndexed;
    };

    void IndexHeader();
    void BindColumns();
    void CheckColumns(const std::vector<std::string>& lacking);
    void BindCell(const BoundColumn& column, std::string_view cell, std::uint64_t line);

    std::string source;
    CaseBinderOptions options;
    /// Whether the model gets texts that are no numbers.
    bool passesTextsOn;
    std::vector<std::string> columnNames;
    std::string delimiterHint;
    SeededMap<std::string_view, std::size_t> columnsByName;
    std::unique_ptr<const CaseFields> fields;  // owns some of the variables of the columns
    std::vector<BoundColumn> columns;
    /// For each column of the table its position in the list above; nothing for an unused column.
    std::vector<std::optional<std::size_t>> boundColumns;
    /// The positions in the record that the previous sparse row set.
    std::vector<int> sparsePositions;
    std::optional<Record> record;
};

}  // namespace nbscore

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"
#include "table/TableOptions.h"

namespace nbscore {

/// The names of the data fields that a model's inputs read. The target is among them where an input reads it.
struct FieldsOfInputs {
    /// Inputs that are data fields themselves.
    std::set<std::string> asTheyAre;
    /// What inputs are computed from where they are derived, directly or through other derived fields. What only
    /// derived fields read which no input uses is not among them.
    std::set<std::string> ofDerivedInputs;
};

/// Nothing where they are not known: the model has derived fields that are no DerivedFieldSources, or is no
/// ModelSelfDescription itself. Takes the time of a ModelSelfDescription.
std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model);

/// A cell of a row, and the number of its column, from 0.
struct PlacedCell {
    std::size_t column = 0;
    std::string_view text;
};

/// Turns the rows of a table into case records for one model.
///
/// The fields that a model needs are those with the predictor role, and those that its derived inputs are computed
/// from, the target aside. The target is taken where an input reads it and the table has it, and never needed; such
/// records are read by name, because models keep no position of their target. Of a model with derived fields that does
/// not tell what its inputs read (FindFieldsOfInputs) every field of the dictionary that the table happens to have is
/// taken instead. An empty cell is an absent value. Cells of numeric fields are read as numbers; one whose text the
/// field declares as a missing value is absent. Texts are taken as they stand.
class CaseBinder {
public:
    /// @param model borrowed, to outlive the binder.
    /// @param header the table's column names, from its first line. One of them may be empty. Throws CaseDataError
    ///     when a name is given twice, or a needed one is not there.
    CaseBinder(const ScoreModel& model, const std::vector<std::string>& header, const std::string& sourceName,
               const CaseBinderOptions& options);

    /// The record of one row, valid until the next call. Throws CaseDataError naming line, column and text for a
    /// number that is none, and naming the line for a row with too many or too few cells.
    const ScoreCaseRecord& Bind(const std::vector<std::string_view>& cells, std::uint64_t line);

    /// The same for a row of which only these cells are not empty; takes no time for the others. Of two cells of a
    /// column the later one counts. A binder gets only such rows, or none.
    const ScoreCaseRecord& BindSparse(const std::vector<PlacedCell>& cells, std::uint64_t line);

    /// A field that the table has a column for.
    struct BoundColumn {
        std::size_t column;
        int position;
        bool numeric;
        const ScoreDictVar* var;
    };
    const std::vector<BoundColumn>& GetColumns() const { return columns; }
    /// Throws CaseDataError, naming the line, for a row with too many or too few cells.
    void RequireAllCells(const std::vector<std::string_view>& cells, std::uint64_t line) const;
    /// The number of a cell of a numeric field that is not empty; nothing where it is absent. Throws CaseDataError,
    /// naming line, column and text, for a number that is none.
    std::optional<double> ReadNumberCell(const BoundColumn& column, std::string_view cell, std::uint64_t line) const;

private:
    /// The fields to look for in the table.
    struct Fields {
        std::vector<const ScoreDictVar*> needed;
        std::vector<const ScoreDictVar*> optional;
        bool haveTarget = false;
    };
    class Record : public BaseCaseRecord {
    public:
        Record(const std::vector<std::string>& names, bool hasPositions)
            : BaseCaseRecord(names), isIndexed(hasPositions) {}
        bool IsIndexed() const override { return isIndexed; }

    private:
        bool isIndexed;
    };

    void IndexHeader();
    Fields CollectFields(const ScoreModel& model) const;
    void BindColumns(const Fields& fields);
    void RequireColumns(const std::vector<const ScoreDictVar*>& neededFields) const;
    void BindCell(const BoundColumn& column, std::string_view cell, std::uint64_t line);

    std::string source;
    CaseBinderOptions options;
    std::vector<std::string> columnNames;
    SeededMap<std::string_view, std::size_t> columnsByName;
    std::unique_ptr<ScoreDictionary> predictors;  // owns the variables of the needed columns
    std::vector<BoundColumn> columns;
    /// Per column of the table where it stands in the list above; nothing for one that no field is read from.
    std::vector<std::optional<std::size_t>> boundColumns;
    /// Of the sparse row before: where in the record something is set.
    std::vector<int> sparsePositions;
    std::optional<Record> record;
};

}  // namespace nbscore

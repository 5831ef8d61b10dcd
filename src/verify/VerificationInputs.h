#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "table/CaseBinder.h"

namespace nbscore {

/// Turns the inputs of test cases into case records, by the rules of tables of cases.
///
/// All test cases of a document share one table, and so one kind of record: a model remembers where in records its
/// inputs stand.
class VerificationInputs {
public:
    /// The column of an input, by its number.
    std::size_t AddColumn(const std::string& name);
    /// To be called when all columns are there, before any cell is set.
    /// @param model borrowed.
    void Bind(const ScoreModel& model);

    /// Sets a cell of the next case; those that are not set are missing. The text is borrowed until TakeRecord.
    void SetCell(std::size_t column, std::string_view text);
    /// The next case's record, valid until the one after it. Throws CaseDataError for a number that is none.
    const ScoreCaseRecord& TakeRecord();

private:
    std::vector<std::string> header;
    SeededMap<std::string, std::size_t> columns;
    /// Those of the next case that are set: a wide table costs nothing where rows are sparse.
    std::vector<PlacedCell> cells;
    std::optional<CaseBinder> binder;
};

}  // namespace nbscore

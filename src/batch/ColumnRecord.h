#pragma once

#include <cstddef>
#include <vector>

#include "batch/SourceRecord.h"
#include "batch/SourceScorer.h"

namespace nbscore {

/// The cases of a table as a record that is filled again for each of them. Used by one thread.
class ColumnRecord {
public:
    /// @param columnsOfFields one for each field, null where the table has none. What they point to is borrowed, and
    ///     can be read.
    ColumnRecord(std::vector<SourceField> fields, std::vector<const SourceColumn*> columnsOfFields);

    /// The values of a case, until the next call. Throws std::out_of_range for a code that has no value.
    const ScoreCaseRecord& Read(std::size_t entry);

private:
    SourceRecord record;
    std::vector<const SourceColumn*> columns;
};

}  // namespace nbscore

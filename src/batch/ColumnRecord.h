#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "batch/SourceScorer.h"
#include "framework/BaseCaseRecord.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// A field's values in the columns of a table.
struct FieldColumn {
    std::string name;
    /// Whether the field holds numbers; else texts.
    bool isNumeric = false;
    /// Null where the table has none.
    const SourceColumn* column = nullptr;
    /// Of a field whose values are to be treated.
    std::optional<FieldTreatment> treatment;
};

/// The cases of a table as a record that is filled again for each of them. It is read by name: a model keeps the
/// positions that its first record tells, and tables differ. Used by one thread.
class ColumnRecord {
public:
    /// @param columnsOfFields copied; what they point to is borrowed, and can be read.
    explicit ColumnRecord(std::vector<FieldColumn> columnsOfFields);

    /// The values of a case, until the next call. Throws std::out_of_range for a code that has no value.
    const ScoreCaseRecord& Read(std::size_t entry);

private:
    class NamedRecord : public BaseCaseRecord {
    public:
        using BaseCaseRecord::BaseCaseRecord;
        bool IsIndexed() const override { return false; }
    };

    std::vector<FieldColumn> fields;
    NamedRecord record;
};

}  // namespace nbscore

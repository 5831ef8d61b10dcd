#include "batch/ColumnRecord.h"

#include <utility>
#include <variant>

#include "batch/CaseValues.h"

namespace nbscore {
namespace {

/// Sets a field to an entry of its column.
class EntryReader {
public:
    std::size_t entry;
    /// What codes stand for.
    const Column* values;
    SourceRecord& record;
    std::size_t field;

    void operator()(const AbsentColumn&) const { record.SetAbsent(field); }
    void operator()(const TruthColumn& column) const {
        if (!column.validity.HasValue(entry)) return record.SetAbsent(field);
        record.SetValue(field, column.CodeAt(entry) == 1);
    }
    template <typename Code>
    void operator()(const CodeColumn<Code>& column) const {
        const std::size_t place = values == nullptr ? 0 : FindPlace(column, entry, CountEntries(*values) + 1);
        if (place == 0) return record.SetAbsent(field);
        std::visit(EntryReader{place - 1, nullptr, record, field}, *values);
    }
    template <typename ValueColumn>
    void operator()(const ValueColumn& column) const {
        if (!column.validity.HasValue(entry)) return record.SetAbsent(field);
        record.SetValue(field, column.At(entry));
    }
};

}  // namespace

ColumnRecord::ColumnRecord(std::vector<SourceField> fields, std::vector<const SourceColumn*> columnsOfFields)
    : record(std::move(fields)), columns(std::move(columnsOfFields)) {}

const ScoreCaseRecord& ColumnRecord::Read(std::size_t entry) {
    for (std::size_t field = 0; field < columns.size(); ++field) {
        if (columns[field] == nullptr) continue;  // absent from the start
        std::visit(EntryReader{entry, columns[field]->values, record, field}, columns[field]->column);
    }
    return record.Get();
}

}  // namespace nbscore

#include "batch/ColumnRecord.h"

#include <string_view>
#include <utility>
#include <variant>

#include "batch/CaseValues.h"
#include "framework/NumericValue.h"

namespace nbscore {
namespace {

std::vector<std::string> NamesOf(const std::vector<FieldColumn>& fields) {
    std::vector<std::string> names;
    for (const FieldColumn& field : fields)
        names.push_back(field.name);
    return names;
}

/// Sets the values of one field, after their treatment where there is one.
class FieldSetter {
public:
    FieldSetter(const FieldColumn& fieldColumn, BaseCaseRecord& caseRecord, int fieldPosition)
        : field(fieldColumn), record(caseRecord), position(fieldPosition) {}

    void SetAbsent() const {
        if (field.treatment) return Set(field.treatment->TreatMissing());
        record.SetAbsent(position);
    }
    void SetValue(double number) const {
        if (field.treatment) return Set(field.treatment->TreatNumber(number));
        // As a cell of a table would hold it.
        if (field.isNumeric) return record.SetNumber(position, number);
        record.SetText(position, NumericValue(number).GetString());
    }
    void SetValue(std::string_view text) const {
        if (field.treatment) return Set(field.treatment->TreatText(text));
        record.SetText(position, text);
    }
    void SetValue(bool truth) const {
        if (field.isNumeric) return SetValue(truth ? 1.0 : 0.0);
        SetValue(std::string_view(truth ? "true" : "false"));
    }

private:
    void Set(const FieldTreatment::Treated& treated) const {
        if (treated.kind != FieldTreatment::Kind::Value) return record.SetAbsent(position);
        if (treated.isNumber) return record.SetNumber(position, treated.number);
        record.SetText(position, treated.text);
    }

    const FieldColumn& field;
    BaseCaseRecord& record;
    int position;
};

/// Sets a field to an entry of its column.
class EntryReader {
public:
    std::size_t entry;
    /// What codes stand for.
    const Column* values;
    const FieldSetter& setter;

    void operator()(const AbsentColumn&) const { setter.SetAbsent(); }
    void operator()(const TruthColumn& column) const {
        if (!column.validity.HasValue(entry)) return setter.SetAbsent();
        setter.SetValue(column.CodeAt(entry) == 1);
    }
    template <typename Code>
    void operator()(const CodeColumn<Code>& column) const {
        const std::size_t place = values == nullptr ? 0 : FindPlace(column, entry, CountEntries(*values) + 1);
        if (place == 0) return setter.SetAbsent();
        std::visit(EntryReader{place - 1, nullptr, setter}, *values);
    }
    template <typename ValueColumn>
    void operator()(const ValueColumn& column) const {
        if (!column.validity.HasValue(entry)) return setter.SetAbsent();
        setter.SetValue(column.At(entry));
    }
};

}  // namespace

ColumnRecord::ColumnRecord(std::vector<FieldColumn> columnsOfFields)
    : fields(std::move(columnsOfFields)), record(NamesOf(fields)) {}

const ScoreCaseRecord& ColumnRecord::Read(std::size_t entry) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const FieldColumn& field = fields[i];
        const FieldSetter setter(field, record, static_cast<int>(i));
        if (field.column == nullptr) {
            setter.SetAbsent();
        } else {
            std::visit(EntryReader{entry, field.column->values, setter}, field.column->column);
        }
    }
    return record;
}

}  // namespace nbscore

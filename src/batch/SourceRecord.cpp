#include "batch/SourceRecord.h"

#include <utility>

#include "framework/NumericValue.h"

namespace nbscore {
namespace {

std::vector<std::string> NamesOf(const std::vector<SourceField>& fields) {
    std::vector<std::string> names;
    for (const SourceField& field : fields)
        names.push_back(field.name);
    return names;
}

}  // namespace

SourceRecord::SourceRecord(std::vector<SourceField> caseFields)
    : fields(std::move(caseFields)), record(NamesOf(fields)) {
    for (std::size_t field = 0; field < fields.size(); ++field)
        SetAbsent(field);
}

void SourceRecord::SetAbsent(std::size_t field) {
    if (fields[field].treatment) return SetTreated(field, fields[field].treatment->TreatMissing());
    record.SetAbsent(static_cast<int>(field));
}

void SourceRecord::SetValue(std::size_t field, double number) {
    if (fields[field].treatment) return SetTreated(field, fields[field].treatment->TreatNumber(number));
    if (fields[field].isNumeric) return record.SetNumber(static_cast<int>(field), number);
    record.SetText(static_cast<int>(field), NumericValue(number).GetString());
}

void SourceRecord::SetValue(std::size_t field, std::string_view text) {
    if (fields[field].treatment) return SetTreated(field, fields[field].treatment->TreatText(text));
    record.SetText(static_cast<int>(field), text);
}

void SourceRecord::SetValue(std::size_t field, bool truth) {
    if (fields[field].isNumeric) return SetValue(field, truth ? 1.0 : 0.0);
    SetValue(field, std::string_view(truth ? "true" : "false"));
}

void SourceRecord::SetTreated(std::size_t field, const FieldTreatment::Treated& treated) {
    const auto position = static_cast<int>(field);
    if (treated.kind != FieldTreatment::Kind::Value) return record.SetAbsent(position);
    if (treated.isNumber) return record.SetNumber(position, treated.number);
    record.SetText(position, treated.text);
}

}  // namespace nbscore

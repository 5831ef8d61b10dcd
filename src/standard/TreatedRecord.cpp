#include "standard/TreatedRecord.h"

#include <utility>

#include "naivebayes/BorrowedText.h"

namespace nbscore {

std::size_t TreatedFields::Set(const ScoreDictVar& var, FieldTreatment treatment) {
    const std::string name = var.GetName();
    const auto [entry, isNew] = slotsByName.try_emplace(name, fields.size());
    if (isNew) {
        fields.push_back({&var, name, std::move(treatment)});
    } else {
        fields[entry->second].treatment = std::move(treatment);
    }
    return entry->second;
}

std::size_t TreatedFields::Require(const ScoreDictVar& var) {
    const int slot = Find(var.GetName());
    return slot >= 0 ? static_cast<std::size_t>(slot) : Set(var, FieldTreatment(var, {}));
}

void TreatedFields::NotePositions(const ScoreCaseRecord& record) {
    for (Field& field : fields)
        field.position = record.GetVarIndex(field.name);
}

int TreatedFields::Find(const std::string& name) const {
    const auto found = slotsByName.find(name);
    return found == slotsByName.end() ? -1 : static_cast<int>(found->second);
}

const TreatedFields::Field* TreatedRecord::Fill(const TreatedFields& treatedFields, const ScoreCaseRecord& caseRecord,
                                                bool usesPositions) {
    fields = &treatedFields;
    record = &caseRecord;
    cells.resize(treatedFields.GetAll().size());
    const TreatedFields::Field* firstInvalid = nullptr;
    for (std::size_t slot = 0; slot < cells.size(); ++slot) {
        const TreatedFields::Field& field = treatedFields.GetAll()[slot];
        const ScoreValue* value =
            usesPositions ? caseRecord.GetValueByIndex(field.position) : caseRecord.GetValueByName(field.name);
        Treat(field.treatment, value, cells[slot]);
        if (cells[slot].kind == FieldTreatment::Kind::Invalid && firstInvalid == nullptr) firstInvalid = &field;
    }
    return firstInvalid;
}

void TreatedRecord::Treat(const FieldTreatment& treatment, const ScoreValue* value, Cell& cell) {
    if (value == nullptr) {
        cell.Hold(treatment.TreatMissing());
    } else if (value->GetType() == ScoreValue::Numeric) {
        cell.Hold(treatment.TreatNumber(value->GetDouble()));
    } else {
        // Of a value that is neither number nor text, its text.
        const BorrowedText text(*value);
        cell.Hold(treatment.TreatText(text.Get()));
    }
}

void TreatedRecord::Cell::Hold(const FieldTreatment::Treated& treated) {
    kind = treated.kind;
    isNumber = treated.isNumber;
    if (kind != FieldTreatment::Kind::Value) return;
    if (isNumber) {
        number.SetDoubleValue(treated.number);
    } else {
        text.SetText(treated.text);
    }
}

const ScoreValue* TreatedRecord::GetValueByIndex(int index) const {
    const auto slot = static_cast<std::size_t>(index);
    if (slot >= cells.size() || cells[slot].kind != FieldTreatment::Kind::Value) return nullptr;
    if (cells[slot].isNumber) return &cells[slot].number;
    return &cells[slot].text;
}

const ScoreValue* TreatedRecord::GetValueByName(const std::string& name) const {
    const int slot = fields->Find(name);
    return slot >= 0 ? GetValueByIndex(slot) : record->GetValueByName(name);
}

bool TreatedRecord::IsIndexed() const {
    return true;
}

int TreatedRecord::GetVarIndex(const std::string& name) const {
    return fields->Find(name);
}

}  // namespace nbscore

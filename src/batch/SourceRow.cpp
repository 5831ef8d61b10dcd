#include "batch/SourceRow.h"

#include <stdexcept>
#include <utility>

#include "batch/CaseValues.h"

namespace nbscore {

SourceRow::SourceRow(const ScoreModel& model, const BatchScorer& scorer, std::vector<Field> rowFields,
                     std::vector<SourceField> sources, const std::vector<DerivedInput>& derived)
    : scoredModel(model),
      derivedInputs(derived),
      row(scorer.MakeRow()),
      fields(std::move(rowFields)),
      record(std::move(sources)),
      mustCompute(!derived.empty()) {}

const SourceRow::Field& SourceRow::Find(std::size_t position) const {
    if (position >= fields.size()) RefuseInput(position);
    return fields[position];
}

void SourceRow::SetText(std::size_t position, std::string_view text) {
    const Field& field = Find(position);
    if (!field.takesTexts)
        throw std::invalid_argument("The field \"" + field.name + "\" holds numbers, and is given a text.");
    if (field.input) row->SetText(*field.input, text);
    if (!field.source) return;
    mustCompute = true;
    record.SetValue(*field.source, text);
}

void SourceRow::SetNumber(std::size_t position, double number) {
    const Field& field = Find(position);
    if (field.input) row->SetNumber(*field.input, number);
    if (!field.source) return;
    mustCompute = true;
    record.SetValue(*field.source, number);
}

void SourceRow::SetMissing(std::size_t position) {
    const Field& field = Find(position);
    if (field.input) row->SetMissing(*field.input);
    if (!field.source) return;
    mustCompute = true;
    record.SetAbsent(*field.source);
}

void SourceRow::ComputeInputs() {
    if (!mustCompute) return;
    ComputeDerived(scoredModel, derivedInputs, record.Get(), [this](std::size_t i, const ScoreValue* value) {
        const DerivedInput& derived = derivedInputs[i];
        if (value == nullptr) return row->SetMissing(derived.input);
        if (derived.isNumeric) return row->SetNumber(derived.input, value->GetDouble());
        row->SetText(derived.input, value->GetString());
    });
    mustCompute = false;
}

RowAnswer SourceRow::Score() {
    ComputeInputs();
    return row->Score();
}

std::span<const RankedSubModel> SourceRow::ScoreBest(std::size_t count) {
    ComputeInputs();
    return row->ScoreBest(count);
}

}  // namespace nbscore

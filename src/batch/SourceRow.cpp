#include "batch/SourceRow.h"

#include <stdexcept>
#include <utility>

#include "batch/BatchScorer.h"
#include "batch/CaseValues.h"
#include "batch/DerivedColumns.h"
#include "batch/SourceRecord.h"

namespace nbscore {

SourceRow::SourceRow(const ScoreModel& model, const BatchScorer& scorer, std::vector<Field> rowFields,
                     std::vector<SourceField> sources, const std::vector<DerivedInput>& derived)
    : scoredModel(model),
      derivedInputs(derived),
      row(scorer.MakeRow()),
      fields(std::move(rowFields)),
      record(std::make_unique<SourceRecord>(std::move(sources))),
      mustCompute(!derived.empty()) {}

SourceRow::~SourceRow() = default;

void SourceRow::RefuseField(std::size_t position) {
    RefuseInput(position);
}

void SourceRow::RefuseText(const Field& field) {
    throw std::invalid_argument("The field \"" + *field.name + "\" holds numbers, and is given a text.");
}

void SourceRow::SetSource(std::size_t source, std::string_view text) {
    mustCompute = true;
    record->SetValue(source, text);
}

void SourceRow::SetSource(std::size_t source, double number) {
    mustCompute = true;
    record->SetValue(source, number);
}

void SourceRow::SetSourceMissing(std::size_t source) {
    mustCompute = true;
    record->SetAbsent(source);
}

void SourceRow::ComputeInputs() {
    ComputeDerived(scoredModel, derivedInputs, record->Get(), [this](std::size_t i, const ScoreValue* value) {
        const DerivedInput& derived = derivedInputs[i];
        if (value == nullptr) return row->SetMissing(derived.input);
        if (derived.isNumeric) return row->SetNumber(derived.input, value->GetDouble());
        row->SetText(derived.input, value->GetString());
    });
    mustCompute = false;
}

}  // namespace nbscore

#include "batch/DerivedColumns.h"

namespace nbscore {

DerivedColumns::DerivedColumns(const ScoreModel& model, const std::vector<DerivedInput>& inputs)
    : scoredModel(model), derivedInputs(inputs), columns(inputs.size()) {}

void DerivedColumns::Add(const ScoreCaseRecord& record) {
    ComputeDerived(scoredModel, derivedInputs, record, [this](std::size_t i, const ScoreValue* value) {
        columns[i].Add(value, derivedInputs[i].isNumeric, numCases);
    });
    ++numCases;
}

void DerivedColumns::Values::Add(const ScoreValue* value, bool isNumeric, std::size_t entry) {
    if (entry % 8 == 0) bits.push_back(0);
    if (value != nullptr) bits.back() = static_cast<std::uint8_t>(bits.back() | (1U << (entry % 8)));
    if (isNumeric) {
        numbers.push_back(value == nullptr ? 0.0 : value->GetDouble());
        return;
    }
    if (value != nullptr) bytes += value->GetString();
    offsets.push_back(static_cast<std::int64_t>(bytes.size()));
}

Column DerivedColumns::Get(std::size_t position) const {
    const Values& values = columns[position];
    const Validity validity{values.bits.data(), 0};
    if (derivedInputs[position].isNumeric) return NumberColumn{values.numbers, validity};
    return TextColumn<std::int64_t>{values.bytes.data(), values.offsets, validity};
}

}  // namespace nbscore

#include "framework/BaseDictVar.h"

#include <utility>

namespace {

std::vector<std::unique_ptr<ScoreValue>> CopiesOf(const std::vector<std::unique_ptr<ScoreValue>>& values) {
    std::vector<std::unique_ptr<ScoreValue>> copies;
    copies.reserve(values.size());
    for (const auto& value : values)
        copies.emplace_back(value->Clone());
    return copies;
}

}  // namespace

BaseDictVar::BaseDictVar(std::string variableName, StorageType storage, MeasureLevel level)
    : name(std::move(variableName)), storageType(storage), measureLevel(level) {}

BaseDictVar::BaseDictVar(const BaseDictVar& other)
    : ScoreDictVar(other),
      name(other.name),
      displayName(other.displayName),
      storageType(other.storageType),
      measureLevel(other.measureLevel),
      validValues(other.validValues ? std::make_unique<ScoreValueLabelSet>(*other.validValues) : nullptr),
      missingValues(CopiesOf(other.missingValues)),
      missingNumbers(other.missingNumbers),
      missingTexts(other.missingTexts),
      invalidValues(CopiesOf(other.invalidValues)),
      intervals(other.intervals),
      holdsTruthValues(other.holdsTruthValues),
      index(other.index.load(std::memory_order_relaxed)) {}

BaseDictVar::~BaseDictVar() = default;

ScoreDictVar* BaseDictVar::Clone() const {
    return new BaseDictVar(*this);
}

bool BaseDictVar::IsMissingValue(const ScoreValue* value) const {
    if (value == nullptr) return false;
    if (value->IsSystemMissingValue()) return true;
    if (value->GetType() == ScoreValue::Numeric) return missingNumbers.contains(value->GetDouble());
    if (value->GetType() != ScoreValue::String || missingTexts.empty()) return false;
    return missingTexts.contains(value->GetString());
}

std::string BaseDictVar::GetName() const {
    return name;
}

int BaseDictVar::GetStorageType() const {
    return storageType;
}

int BaseDictVar::GetMeasureLevel() const {
    return measureLevel;
}

const ScoreValueLabelSet* BaseDictVar::GetValueLabelSet() const {
    return validValues.get();
}

void BaseDictVar::SetIndex(int position) {
    index.store(position, std::memory_order_relaxed);
}

int BaseDictVar::GetIndex() const {
    return index.load(std::memory_order_relaxed);
}

void BaseDictVar::AddValidValue(std::unique_ptr<ScoreValue> value, std::string displayValue) {
    if (!validValues) validValues = std::make_unique<ScoreValueLabelSet>();
    validValues->AddLabel(ScoreValueLabel(std::move(value), std::move(displayValue)));
}

void BaseDictVar::AddMissingValue(std::unique_ptr<ScoreValue> value) {
    if (value->GetType() == ScoreValue::Numeric) missingNumbers.insert(value->GetDouble());
    if (value->GetType() == ScoreValue::String) missingTexts.insert(value->GetString());
    missingValues.push_back(std::move(value));
}

void BaseDictVar::AddInvalidValue(std::unique_ptr<ScoreValue> value) {
    invalidValues.push_back(std::move(value));
}

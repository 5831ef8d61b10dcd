#include "framework/BaseDictVar.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <string_view>
#include <utility>

#include "framework/NumberText.h"

namespace {

std::vector<std::unique_ptr<ScoreValue>> CopiesOf(const std::vector<std::unique_ptr<ScoreValue>>& values) {
    std::vector<std::unique_ptr<ScoreValue>> copies;
    copies.reserve(values.size());
    for (const auto& value : values)
        copies.emplace_back(value->Clone());
    return copies;
}

/// More values than this are counted and no longer listed, so that the line stays readable.
constexpr std::size_t mostListed = 20;

/// The text with a blank for every control character: a name may hold line ends, the description is one line.
std::string OnOneLine(std::string_view text) {
    std::string line;
    std::ranges::transform(text, std::back_inserter(line), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x20 || code == 0x7f ? ' ' : character;
    });
    return line;
}

std::string Quoted(std::string_view text) {
    return '"' + OnOneLine(text) + '"';
}

std::string Describe(const ScoreValue& value) {
    if (value.IsSystemMissingValue()) return "system-missing";
    const std::string text = value.GetString();
    return value.GetType() == ScoreValue::Numeric ? text : Quoted(text);
}

std::string Describe(const std::unique_ptr<ScoreValue>& value) {
    return Describe(*value);
}

std::string Describe(const ScoreValueLabel& label) {
    const std::string value = Describe(*label.GetValue());
    return label.GetDisplayValue().empty() ? value : value + " = " + Quoted(label.GetDisplayValue());
}

std::string Describe(const ValueInterval& interval) {
    return (interval.IsClosedOnTheLeft() ? "[" : "(") + nbscore::FormatNumber(interval.leftMargin) + ", " +
           nbscore::FormatNumber(interval.rightMargin) + (interval.IsClosedOnTheRight() ? "]" : ")");
}

template <class Item>
std::string DescribeList(std::string_view heading, const std::vector<Item>& items) {
    if (items.empty()) return {};
    std::string description = "; " + std::string(heading) + ": ";
    for (std::size_t position = 0; position < std::min(items.size(), mostListed); ++position) {
        if (position > 0) description += ", ";
        description += Describe(items[position]);
    }
    if (items.size() > mostListed) description += ", ... (" + std::to_string(items.size()) + " in all)";
    return description;
}

std::string_view LevelName(int measureLevel) {
    switch (measureLevel) {
        case ScoreDictVar::Continuous:
            return "continuous";
        case ScoreDictVar::Ordinal:
            return "ordinal";
        default:
            return "categorical";
    }
}

}  // namespace

BaseDictVar::BaseDictVar(std::string variableName, StorageType storage, MeasureLevel level)
    : name(std::move(variableName)), storageType(storage), measureLevel(level) {}

BaseDictVar::BaseDictVar(const BaseDictVar& other)
    : ScoreDictVar(other),
      name(other.name),
      storageType(other.storageType),
      measureLevel(other.measureLevel),
      details(other.details ? std::make_unique<Details>(*other.details) : nullptr),
      holdsTruthValues(other.holdsTruthValues),
      rule(other.rule),
      index(other.index.load(std::memory_order_relaxed)) {}

BaseDictVar::Details::Details(const Details& other)
    : displayName(other.displayName),
      valid(other.valid ? std::make_unique<ScoreValueLabelSet>(*other.valid) : nullptr),
      missing(CopiesOf(other.missing)),
      missingNumbers(other.missingNumbers),
      missingTexts(other.missingTexts),
      invalid(CopiesOf(other.invalid)),
      intervals(other.intervals) {}

BaseDictVar::~BaseDictVar() = default;

const BaseDictVar::Details& BaseDictVar::GetDetails() const {
    static const Details none;
    return details ? *details : none;
}

BaseDictVar::Details& BaseDictVar::ChangeDetails() {
    if (!details) details = std::make_unique<Details>();
    return *details;
}

ScoreDictVar* BaseDictVar::Clone() const {
    return new BaseDictVar(*this);
}

bool BaseDictVar::IsMissingValue(const ScoreValue* value) const {
    if (value == nullptr) return false;
    if (value->IsSystemMissingValue()) return true;
    if (!details) return false;
    if (value->GetType() == ScoreValue::Numeric) return details->missingNumbers.contains(value->GetDouble());
    if (value->GetType() != ScoreValue::String || details->missingTexts.empty()) return false;
    return details->missingTexts.contains(value->GetString());
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
    return details ? details->valid.get() : nullptr;
}

void BaseDictVar::SetIndex(int position) {
    index.store(position, std::memory_order_relaxed);
}

int BaseDictVar::GetIndex() const {
    return GetPosition();
}

void BaseDictVar::SetDisplayName(std::string shownName) {
    if (shownName.empty() && !details) return;
    ChangeDetails().displayName = std::move(shownName);
}

void BaseDictVar::AddValidValue(std::unique_ptr<ScoreValue> value, std::string displayValue) {
    auto& valid = ChangeDetails().valid;
    if (!valid) valid = std::make_unique<ScoreValueLabelSet>();
    valid->AddLabel(ScoreValueLabel(std::move(value), std::move(displayValue)));
}

void BaseDictVar::AddMissingValue(std::unique_ptr<ScoreValue> value) {
    Details& changed = ChangeDetails();
    if (value->GetType() == ScoreValue::Numeric) changed.missingNumbers.insert(value->GetDouble());
    if (value->GetType() == ScoreValue::String) changed.missingTexts.insert(value->GetString());
    changed.missing.push_back(std::move(value));
}

void BaseDictVar::AddInvalidValue(std::unique_ptr<ScoreValue> value) {
    ChangeDetails().invalid.push_back(std::move(value));
}

void BaseDictVar::Print(std::ostream& out) const {
    std::string line = OnOneLine(name);
    const Details& declared = GetDetails();
    if (!declared.displayName.empty()) line += ' ' + Quoted(declared.displayName);
    line += ": ";
    line += LevelName(measureLevel);
    line += storageType == NumericStorage ? ", numeric" : ", text";
    if (declared.valid) line += DescribeList("values", declared.valid->GetValueLabels());
    line += DescribeList("missing values", declared.missing);
    line += DescribeList("invalid values", declared.invalid);
    line += DescribeList("intervals", declared.intervals);
    out << line << '\n';
}

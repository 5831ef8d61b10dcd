#include "transform/evaluation/DerivedCaseRecord.h"

#include <string>
#include <utility>

namespace nbscore {
namespace {

/// The memory of longer texts is freed when their case is over.
constexpr std::size_t longestKeptText = 4096;

}  // namespace

DerivedCaseRecord::DerivedCaseRecord(const DerivedFields& derivedFields)
    : derived(derivedFields), watch(derivedFields.limits) {
    cells.reserve(derived.fields.size());
    std::uint32_t numberCount = 0;
    std::uint32_t textCount = 0;
    for (const DerivedField& field : derived.fields)
        cells.push_back({.place = field.function.GivesNumbers() ? numberCount++ : textCount++});
    numbers.assign(numberCount, NumericValue(0.0));
    texts.assign(textCount, StringValue(std::string()));
}

void DerivedCaseRecord::Begin(const ScoreCaseRecord* caseRecord) {
    record = caseRecord;
    ++caseNumber;
    for (const std::size_t position : longTexts)
        TextOf(position) = StringValue(std::string());
    longTexts.clear();
}

const ScoreValue* DerivedCaseRecord::GetValueByIndex(int) const {
    return nullptr;
}

bool DerivedCaseRecord::IsIndexed() const {
    return false;
}

int DerivedCaseRecord::GetVarIndex(const std::string&) const {
    return -1;
}

const ScoreValue* DerivedCaseRecord::GetValueByName(const std::string& name) const {
    const auto position = derived.PositionOf(name);
    if (!position) return nullptr;
    // An earlier call that ended in an exception may have left something.
    path.clear();
    levelsInUse = 0;
    ComputeWithDependencies(*position);
    return cells[*position].isPresent ? &ValueIn(*position) : nullptr;
}

/// First computes what a field needs in every case, then the field. Not by recursion, because a chain of fields may be
/// too long for the stack. There are no cycles: the reader refused them.
void DerivedCaseRecord::ComputeWithDependencies(std::size_t wanted) const {
    if (IsComputed(wanted)) return;
    const std::size_t start = path.size();
    path.push_back({wanted, 0});
    while (path.size() > start) {
        Step& step = path.back();
        const DerivedField& field = derived.fields[step.field];
        if (step.nextDependency == CountComputedAhead(field)) {
            const std::size_t ready = step.field;
            path.pop_back();
            Compute(ready);
            continue;
        }
        const std::size_t needed = derived.DependenciesOf(field)[step.nextDependency++];
        if (!IsComputed(needed)) path.push_back({needed, 0});
    }
}

/// What a field needs only in some cases is computed when its expression asks for it, while it is evaluated. When
/// fields nest deeply in this way they take stack: from a certain depth on, everything that they could need is computed
/// before.
std::size_t DerivedCaseRecord::CountComputedAhead(const DerivedField& field) const {
    constexpr std::size_t mostLevelsInUse = 250;
    return levelsInUse + field.levels <= mostLevelsInUse ? field.alwaysNeeded : field.dependencyCount;
}

void DerivedCaseRecord::Compute(std::size_t position) const {
    watch.Step();
    const DerivedField& field = derived.fields[position];
    // The field that asked for this one while it was computed goes on with what it had left.
    const WorkBudget budgetOfAskingField = budget;
    budget = WorkBudget(WorkBudget::ofCase / static_cast<double>(derived.fields.size()), &watch);
    levelsInUse += field.levels;
    ExpressionValue result = field.function.Evaluate(*this);
    levelsInUse -= field.levels;
    // Otherwise functions that leave out missing arguments would make a number of the remaining ones.
    if (budget.IsSpent()) result = {};
    budget = budgetOfAskingField;
    Store(std::move(result), position);
}

void DerivedCaseRecord::Store(ExpressionValue result, std::size_t position) const {
    Cell& cell = cells[position];
    cell.isPresent = false;
    if (const auto* number = std::get_if<double>(&result)) {
        NumberOf(position).SetDoubleValue(*number);
        cell.isPresent = true;
    } else if (const auto* text = std::get_if<std::string>(&result)) {
        if (derived.fields[position].hasTruthTexts) {
            TextOf(position).SetText(AsTruthText(*text));
        } else {
            TextOf(position).SetText(*text);
        }
        if (text->size() > longestKeptText) longTexts.push_back(position);
        cell.isPresent = true;
    }
    const ScoreDictVar& variable = *derived.fields[position].variable;
    if (cell.isPresent && variable.IsMissingValue(&ValueIn(position))) cell.isPresent = false;
    cell.computedForCase = caseNumber;
}

const ScoreValue& DerivedCaseRecord::ValueIn(std::size_t field) const {
    if (HoldsNumber(field)) return NumberOf(field);
    return TextOf(field);
}

ExpressionValue DerivedCaseRecord::ValueOf(const FieldReference& field) const {
    ExpressionValue value =
        field.source == FieldReference::CaseRecord ? GetInput(field.position) : GetDerived(field.position);
    // Truth values are stored as texts.
    const auto* text = field.kind == ValueKind::Truth ? std::get_if<std::string>(&value) : nullptr;
    if (text != nullptr) return ReadAs(ValueKind::Truth, *text);
    return value;
}

bool DerivedCaseRecord::IsValid(const FieldReference& field) const {
    const DeclaredValidity& validity = field.source == FieldReference::CaseRecord
                                           ? derived.inputs[field.position].validity
                                           : derived.fields[field.position].validity;
    return validity.Allows(Get(field));
}

ExpressionValue DerivedCaseRecord::GetInput(std::size_t position) const {
    const InputField& input = derived.inputs[position];
    const ScoreValue* value = record ? record->GetValueByName(input.name) : nullptr;
    if (!value || input.variable->IsMissingValue(value)) return {};
    if (input.variable->GetStorageType() != ScoreDictVar::NumericStorage) return value->GetString();
    // A text in a numeric field is read as a number, and is missing when it is none.
    const NumericValue number(value->GetDouble());
    if (input.variable->IsMissingValue(&number)) return {};
    return number.GetDouble();
}

ExpressionValue DerivedCaseRecord::GetDerived(std::size_t position) const {
    ComputeWithDependencies(position);
    if (!cells[position].isPresent) return {};
    if (HoldsNumber(position)) return NumberOf(position).GetDouble();
    return TextOf(position).GetText();
}

}  // namespace nbscore

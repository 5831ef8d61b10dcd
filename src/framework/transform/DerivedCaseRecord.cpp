#include "framework/transform/DerivedCaseRecord.h"

#include <string>

namespace nbscore {
namespace {

const ScoreValue& AsScoreValue(const std::variant<NumericValue, StringValue>& value) {
    return std::visit([](const auto& held) -> const ScoreValue& { return held; }, value);
}

}  // namespace

DerivedCaseRecord::DerivedCaseRecord(const DerivedFields& derivedFields) : derived(derivedFields) {
    cells.reserve(derived.fields.size());
    for (const DerivedField& field : derived.fields) {
        if (field.function.GivesNumbers()) {
            cells.push_back({NumericValue(0.0)});
        } else {
            cells.push_back({StringValue(std::string())});
        }
    }
}

void DerivedCaseRecord::Begin(const ScoreCaseRecord* caseRecord) {
    record = caseRecord;
    ++caseNumber;
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
    const auto found = derived.positionsByName.find(name);
    if (found == derived.positionsByName.end()) return nullptr;
    ComputeWithDependencies(found->second);
    const Cell& cell = cells[found->second];
    return cell.isPresent ? &AsScoreValue(cell.value) : nullptr;
}

/// First what a field needs, then the field; with a way of its own instead of recursion, because a chain of fields
/// may be longer than the stack is deep. There are no cycles: the reader refused them.
void DerivedCaseRecord::ComputeWithDependencies(std::size_t wanted) const {
    if (IsComputed(wanted)) return;
    way.clear();
    way.push_back({wanted, 0});
    while (!way.empty()) {
        Step& step = way.back();
        const auto& dependencies = derived.fields[step.field].dependencies;
        if (step.nextDependency == dependencies.size()) {
            Compute(step.field);
            way.pop_back();
            continue;
        }
        const std::size_t needed = dependencies[step.nextDependency++];
        if (!IsComputed(needed)) way.push_back({needed, 0});
    }
}

void DerivedCaseRecord::Compute(std::size_t position) const {
    const DerivedField& field = derived.fields[position];
    Cell& cell = cells[position];
    const ExpressionValue result = field.function.Evaluate(*this);
    cell.isPresent = false;
    if (const auto* number = std::get_if<double>(&result)) {
        std::get<NumericValue>(cell.value).SetDoubleValue(*number);
        cell.isPresent = true;
    } else if (const auto* text = std::get_if<std::string>(&result)) {
        std::get<StringValue>(cell.value).SetText(*text);
        cell.isPresent = true;
    }
    if (cell.isPresent && field.variable->IsMissingValue(&AsScoreValue(cell.value))) cell.isPresent = false;
    cell.computedForCase = caseNumber;
}

ExpressionValue DerivedCaseRecord::Get(const FieldReference& field) const {
    return field.source == FieldReference::CaseRecord ? GetInput(field.position) : GetDerived(field.position);
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
    // A text in a numeric field is read as a number, and one that is none is missing.
    const NumericValue number(value->GetDouble());
    if (input.variable->IsMissingValue(&number)) return {};
    return number.GetDouble();
}

ExpressionValue DerivedCaseRecord::GetDerived(std::size_t position) const {
    const Cell& cell = cells[position];
    if (!cell.isPresent) return {};
    if (const auto* number = std::get_if<NumericValue>(&cell.value)) return number->GetDouble();
    return std::get<StringValue>(cell.value).GetText();
}

}  // namespace nbscore

#include "transform/reading/FieldScope.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "framework/VeskException.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/evaluation/DeclaredValidity.h"

namespace nbscore {

FieldScope::FieldScope(DerivedFields& derivedFields, const ScoreDictionary* dataDictionary,
                       const Transcoder& textTranscoder, Refusal refusalOfUnknownField)
    : derived(derivedFields),
      dictionary(dataDictionary),
      transcoder(textTranscoder),
      unknownField(refusalOfUnknownField) {}

void FieldScope::Readings::Begin(std::uint32_t derivedField) {
    reader = derivedField + 1;
    positions.clear();
}

bool FieldScope::Readings::Has(std::uint32_t position) const {
    return position < lastReaders.size() && lastReaders[position] == reader;
}

void FieldScope::Readings::Note(std::uint32_t position) {
    // A search among the positions would take time by the square of what a field reads.
    if (Has(position)) return;
    if (position >= lastReaders.size()) lastReaders.resize(position + 1, 0);
    lastReaders[position] = reader;
    positions.push_back(position);
}

void FieldScope::EnterField(std::uint32_t derivedField) {
    field = derivedField;
    function = nullptr;
    cost = {};
    inputs.Begin(derivedField);
    fieldsAlways.Begin(derivedField);
    fieldsInBranches.Begin(derivedField);
}

void FieldScope::FinishField() {
    DerivedField& finished = derived.fields[field];
    std::vector<std::uint32_t>& readings = derived.readings;
    const auto countBehind = [&readings](std::size_t first) {
        return static_cast<std::uint32_t>(readings.size() - first);
    };
    const auto add = [&readings](const std::vector<std::uint32_t>& positions) {
        readings.insert(readings.end(), positions.begin(), positions.end());
    };
    finished.firstReading = countBehind(0);
    add(fieldsAlways.GetPositions());
    finished.alwaysNeeded = countBehind(finished.firstReading);
    std::ranges::copy_if(fieldsInBranches.GetPositions(), std::back_inserter(readings),
                         [this](std::uint32_t position) { return !fieldsAlways.Has(position); });
    finished.dependencyCount = countBehind(finished.firstReading);
    add(inputs.GetPositions());
    finished.inputCount = countBehind(finished.firstReading + finished.dependencyCount);
}

void FieldScope::EnterFunction(const UserFunction& enteredFunction) {
    function = &enteredFunction;
    parameterPositions.clear();
    for (std::uint32_t i = 0; i < function->parameters.size(); ++i)
        parameterPositions.emplace(function->parameters[i].name, i);
    cost = {};
}

FieldReference FieldScope::Resolve(Element element, std::string_view quotedName) {
    const std::string name = TextAt(element, quotedName, transcoder);
    if (function) return ResolveParameter(element, quotedName, name);
    const auto position = derived.PositionOf(name);
    const ScoreDictVar* variable = dictionary ? dictionary->GetVar(name) : nullptr;
    if (position && !(variable && *position == field)) return ResolveDerived(*position);
    if (variable) return ResolveInput(variable->GetName(), *variable);
    throw RefusalAt(element, unknownField, {ExcerptOf(quotedName)});
}

FieldReference FieldScope::ResolveParameter(Element element, std::string_view quotedName, const std::string& name) {
    const auto found = parameterPositions.find(name);
    if (found == parameterPositions.end()) {
        throw RefusalAt(element, Refusal::ParameterUnknown, {ExcerptOf(quotedName)});
    }
    return {found->second, FieldReference::Parameter, function->parameters[found->second].kind};
}

FieldReference FieldScope::ResolveDerived(std::uint32_t position) {
    (branches > 0 ? fieldsInBranches : fieldsAlways).Note(position);
    return {position, FieldReference::DerivedFields, KindOfField(*derived.fields[position].variable)};
}

FieldReference FieldScope::ResolveInput(const std::string& name, const ScoreDictVar& variable) {
    const auto [entry, isNew] = inputPositions.try_emplace(name, static_cast<std::uint32_t>(derived.inputs.size()));
    if (isNew) {
        derived.inputs.push_back(
            {name, std::unique_ptr<const ScoreDictVar>(variable.Clone()), DeclaredValidity(variable)});
    }
    inputs.Note(entry->second);
    return {entry->second, FieldReference::CaseRecord, KindOfField(variable)};
}

const UserFunction* FieldScope::FindFunctionToCall(const std::string& name) {
    const auto found = derived.functions.positionsByName.find(name);
    if (found == derived.functions.positionsByName.end()) return nullptr;
    cost.calls.push_back({found->second, cost.level});
    return derived.functions.functions[found->second].get();
}

}  // namespace nbscore

#include "framework/transform/FieldScope.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/VeskException.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

ValueKind KindOf(const ScoreDictVar& variable) {
    return variable.GetStorageType() == ScoreDictVar::NumericStorage ? ValueKind::Number : ValueKind::Text;
}

}  // namespace

FieldScope::FieldScope(DerivedFields& derivedFields, const ScoreDictionary* dataDictionary,
                       const Transcoder& textTranscoder)
    : derived(derivedFields), dictionary(dataDictionary), transcoder(textTranscoder) {
    always.lastReaders.resize(derivedFields.fields.size(), 0);
    inBranches.lastReaders.resize(derivedFields.fields.size(), 0);
}

void FieldScope::EnterField(std::size_t derivedField) {
    field = derivedField;
    function = nullptr;
    cost = {};
    always.fields.clear();
    inBranches.fields.clear();
}

void FieldScope::FinishField() {
    DerivedField& finished = derived.fields[field];
    finished.dependencies = always.fields;
    finished.alwaysNeeded = always.fields.size();
    for (const std::size_t position : inBranches.fields) {
        if (always.lastReaders[position] != field + 1) finished.dependencies.push_back(position);
    }
}

void FieldScope::EnterFunction(const UserFunction& enteredFunction) {
    function = &enteredFunction;
    parameterPositions.clear();
    for (std::size_t i = 0; i < function->parameters.size(); ++i)
        parameterPositions.emplace(function->parameters[i].name, i);
    cost = {};
}

FieldReference FieldScope::Resolve(const xercesc::DOMElement* element, const XMLCh* xmlName) {
    const std::string name = TextAt(element, xmlName, transcoder);
    if (function) return ResolveParameter(element, xmlName, name);
    const auto found = derived.positionsByName.find(name);
    if (found != derived.positionsByName.end()) return ResolveDerived(found->second);
    const ScoreDictVar* variable = dictionary ? dictionary->GetVar(name) : nullptr;
    if (variable) return ResolveInput(name, *variable);
    throw RefusalAt(element, VeskException::UnknownVariable, "\"" + ExcerptOf(xmlName) + "\" is no field.");
}

FieldReference FieldScope::ResolveParameter(const xercesc::DOMElement* element, const XMLCh* xmlName,
                                            const std::string& name) {
    const auto found = parameterPositions.find(name);
    if (found == parameterPositions.end()) {
        throw RefusalAt(element, VeskException::UnknownVariable,
                        "\"" + ExcerptOf(xmlName) + "\" is no parameter of the function.");
    }
    return {FieldReference::Parameter, found->second, function->parameters[found->second].kind};
}

FieldReference FieldScope::ResolveDerived(std::size_t position) {
    Readings& readings = branches > 0 ? inBranches : always;
    if (readings.lastReaders[position] != field + 1) readings.fields.push_back(position);
    readings.lastReaders[position] = field + 1;
    return {FieldReference::DerivedFields, position, KindOf(*derived.fields[position].variable)};
}

FieldReference FieldScope::ResolveInput(const std::string& name, const ScoreDictVar& variable) {
    const auto [entry, isNew] = inputPositions.try_emplace(name, derived.inputs.size());
    if (isNew) {
        derived.inputs.push_back(
            {name, std::unique_ptr<const ScoreDictVar>(variable.Clone()), DeclaredValidity(variable)});
    }
    return {FieldReference::CaseRecord, entry->second, KindOf(variable)};
}

const UserFunction* FieldScope::FindFunctionToCall(const std::string& name) {
    const auto found = derived.functions.positionsByName.find(name);
    if (found == derived.functions.positionsByName.end()) return nullptr;
    cost.calls.push_back({found->second, cost.level});
    return derived.functions.functions[found->second].get();
}

}  // namespace nbscore

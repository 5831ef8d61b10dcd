#include "framework/transform/FieldScope.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/VeskException.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

ScoreDictVar::StorageType StorageOf(const ScoreDictVar& variable) {
    return variable.GetStorageType() == ScoreDictVar::NumericStorage ? ScoreDictVar::NumericStorage
                                                                     : ScoreDictVar::StringStorage;
}

}  // namespace

FieldScope::FieldScope(DerivedFields& derivedFields, const ScoreDictionary* dataDictionary,
                       const Transcoder& textTranscoder)
    : derived(derivedFields), dictionary(dataDictionary), transcoder(textTranscoder) {}

FieldReference FieldScope::Resolve(const xercesc::DOMElement* element, const XMLCh* xmlName) {
    const std::string name = TextAt(element, xmlName, transcoder);
    if (const auto found = derived.positionsByName.find(name); found != derived.positionsByName.end()) {
        const std::size_t position = found->second;
        derived.fields[current].dependencies.push_back(position);
        return {FieldReference::DerivedFields, position, StorageOf(*derived.fields[position].variable)};
    }
    const ScoreDictVar* variable = dictionary ? dictionary->GetVar(name) : nullptr;
    if (variable) return ResolveInput(name, *variable);
    throw RefusalAt(element, VeskException::UnknownVariable, "\"" + ExcerptOf(xmlName) + "\" is no field.");
}

FieldReference FieldScope::ResolveInput(const std::string& name, const ScoreDictVar& variable) {
    const auto [entry, isNew] = inputPositions.try_emplace(name, derived.inputs.size());
    if (isNew) derived.inputs.push_back({name, std::unique_ptr<const ScoreDictVar>(variable.Clone())});
    return {FieldReference::CaseRecord, entry->second, StorageOf(variable)};
}

}  // namespace nbscore

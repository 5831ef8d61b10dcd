#include "transform/evaluation/DerivedFieldDictionary.h"

#include <utility>

namespace nbscore {

DerivedFieldDictionary::DerivedFieldDictionary(std::unique_ptr<const DerivedFields> derivedFields)
    : derived(std::move(derivedFields)), records(*derived) {}

void DerivedFieldDictionary::SetUpDerivedCaseRecord() {
    // So that the first case of this thread costs no more than the others. Other threads do the same when they come.
    records.RecordOfThisThread();
}

const ScoreCaseRecord* DerivedFieldDictionary::GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                                      const ScoreDictionary*) {
    DerivedCaseRecord& derivedRecord = records.RecordOfThisThread();
    derivedRecord.Begin(record);
    return &derivedRecord;
}

void DerivedFieldDictionary::GetDerivedVars(std::vector<ScoreDictVar*>& vars) const {
    derived->variables.GetAllVars(vars);
}

ScoreDictVar* DerivedFieldDictionary::GetVar(const std::string& name) const {
    return derived->variables.GetVar(name);
}

std::vector<std::string> DerivedFieldDictionary::GetFieldsRead(const std::string& derivedField) const {
    const auto found = derived->positionsByName.find(derivedField);
    if (found == derived->positionsByName.end()) return {};
    const DerivedField& field = derived->fields[found->second];
    std::vector<std::string> names;
    for (const std::size_t input : field.inputs)
        names.push_back(derived->inputs[input].name);
    for (const std::size_t dependency : field.dependencies)
        names.push_back(derived->fields[dependency].variable->GetName());
    return names;
}

}  // namespace nbscore

#include "framework/transform/DerivedFieldDictionary.h"

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

}  // namespace nbscore

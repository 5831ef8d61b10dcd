#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/BaseDictVar.h"
#include "framework/StringValue.h"
#include "framework/TransformationDictionary.h"

namespace nbscore::test {

/// Answers the same derived record for every case and remembers what it was asked.
class FakeDerivedFields : public TransformationDictionary {
public:
    FakeDerivedFields(std::unique_ptr<BaseDictVar> var, std::unique_ptr<ScoreCaseRecord> record)
        : derivedVar(std::move(var)), derived(std::move(record)) {}
    void SetUpDerivedCaseRecord() override {}
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                  const ScoreDictionary* dictionary) override {
        ++asked;
        askedRecord = record;
        askedDictionary = dictionary;
        return derived.get();
    }
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override { vars = {derivedVar.get()}; }
    ScoreDictVar* GetVar(const std::string& name) const override {
        return name == derivedVar->GetName() ? derivedVar.get() : nullptr;
    }

    int asked = 0;
    const ScoreCaseRecord* askedRecord = nullptr;
    const ScoreDictionary* askedDictionary = nullptr;

private:
    std::unique_ptr<BaseDictVar> derivedVar;
    std::unique_ptr<ScoreCaseRecord> derived;
};

/// A record that has values by position only; asking it by name would give something else.
class PositionsOnlyRecord : public BaseCaseRecord {
public:
    using BaseCaseRecord::BaseCaseRecord;
    const ScoreValue* GetValueByName(const std::string&) const override { return &wrong; }

private:
    StringValue wrong{"b"};
};

}  // namespace nbscore::test

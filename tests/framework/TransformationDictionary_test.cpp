#include "framework/TransformationDictionary.h"

#include <gtest/gtest.h>

#include "framework/BaseCaseRecord.h"
#include "framework/BaseDictVar.h"

namespace {

/// One derived field, `half`, that is half of `whole`.
class HalfDictionary : public TransformationDictionary {
public:
    void SetUpDerivedCaseRecord() override { derived.SetAllAbsent(); }
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord* record, const ScoreDictionary*) override {
        derived.SetNumber(0, record->GetValueByName("whole")->GetDouble() / 2.0);
        return &derived;
    }
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override { vars = {half.get()}; }
    ScoreDictVar* GetVar(const std::string& name) const override {
        return name == half->GetName() ? half.get() : nullptr;
    }

private:
    BaseCaseRecord derived{{"half"}};
    std::unique_ptr<ScoreDictVar> half =
        std::make_unique<BaseDictVar>("half", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
};

TEST(TransformationDictionary, IsUsedThroughItsMisspeltOperation) {
    HalfDictionary halves;
    TransformationDictionary& dictionary = halves;
    BaseCaseRecord record({"whole"});
    record.SetNumber(0, 7.0);
    dictionary.SetUpDerivedCaseRecord();

    const ScoreCaseRecord* const derived = dictionary.GetValuesForDeriedVars(&record, nullptr);
    ASSERT_NE(derived, nullptr);
    EXPECT_EQ(derived->GetValueByName("half")->GetDouble(), 3.5);
}

}  // namespace

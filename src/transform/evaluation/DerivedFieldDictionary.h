#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/DerivedFieldSources.h"
#include "framework/TransformationDictionary.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/evaluation/DerivedRecordPool.h"

namespace nbscore {

/// The derived fields of a document, ready to be computed.
class DerivedFieldDictionary : public TransformationDictionary, public DerivedFieldSources {
public:
    explicit DerivedFieldDictionary(std::unique_ptr<const DerivedFields> derivedFields);

    void SetUpDerivedCaseRecord() override;
    /// The dictionary is not asked: the fields that expressions read were found when the document was read.
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                  const ScoreDictionary* dictionary) override;
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override;
    ScoreDictVar* GetVar(const std::string& name) const override;

    std::vector<std::string> GetFieldsRead(const std::string& derivedField) const override;

private:
    std::unique_ptr<const DerivedFields> derived;
    DerivedRecordPool records;
};

}  // namespace nbscore

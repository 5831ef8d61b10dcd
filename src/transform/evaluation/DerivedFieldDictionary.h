#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/DerivedFieldSources.h"
#include "framework/TransformationDictionary.h"
#include "transform/evaluation/DerivedCaseRecord.h"
#include "transform/evaluation/DerivedFields.h"

namespace nbscore {

/// One record of derived values for each thread that asks for one.
///
/// The pool owns the records and frees them when it goes, whatever threads still run. When a thread ends, the next
/// thread gets its record: a program that starts many threads one after the other keeps few records.
class DerivedRecordPool {
public:
    /// The derived fields must outlive the pool.
    explicit DerivedRecordPool(const DerivedFields& derivedFields);

    /// The calling thread's record: the same one at every call. Any thread may call it.
    DerivedCaseRecord& RecordOfThisThread();

private:
    struct Shelf;
    class Loan;

    const DerivedFields& derived;
    std::shared_ptr<Shelf> shelf;
};

/// The derived fields of a document, ready to be computed.
class DerivedFieldDictionary : public TransformationDictionary, public DerivedFieldSources {
public:
    explicit DerivedFieldDictionary(std::unique_ptr<const DerivedFields> derivedFields);

    void SetUpDerivedCaseRecord() override;
    /// Ignores the dictionary: the fields that expressions read were found when the document was read.
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                  const ScoreDictionary* dictionary) override;
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override;
    ScoreDictVar* GetVar(const std::string& name) const override;

    std::vector<std::string> GetFieldsRead(const std::string& derivedField) const override;
    std::vector<std::string> FindFewSources(const std::string& derivedField, std::size_t mostFields) const override;
    std::string Describe(const std::string& derivedField) const override;
    std::vector<std::string> DescribeFunctions() const override;

private:
    std::unique_ptr<const DerivedFields> derived;
    DerivedRecordPool records;
};

}  // namespace nbscore

#pragma once

#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"

/// The derived fields of a document: variables whose values are computed from a case's own.
class SCOREFRAMEWORK_API TransformationDictionary {
public:
    virtual ~TransformationDictionary();

    /// Makes ready for computing; called once, after the document was read and before the first case.
    virtual void SetUpDerivedCaseRecord() = 0;
    /// The derived values of a case, to be read by name. The record stays the dictionary's own; it is valid until
    /// the same thread's next call and may be asked for by several threads at once. (The misspelt name is the
    /// interface's own: renaming it would break every plug-in.)
    virtual const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord* record,
                                                          const ScoreDictionary* dictionary) = 0;
    /// Replaces the vector's content by every derived variable, in document order. They stay the dictionary's own.
    virtual void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const = 0;
    /// The named derived variable, or null. It stays the dictionary's own.
    virtual ScoreDictVar* GetVar(const std::string& name) const = 0;

protected:
    TransformationDictionary() = default;
    TransformationDictionary(const TransformationDictionary&) = delete;
    TransformationDictionary& operator=(const TransformationDictionary&) = delete;
};

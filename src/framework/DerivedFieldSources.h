#pragma once

#include <string>
#include <vector>

#include "framework/Export.h"

/// A face that derived fields may have beside TransformationDictionary: they tell what they are computed from. To be
/// asked for by `dynamic_cast<const DerivedFieldSources*>(derivedFields)`.
class SCOREFRAMEWORK_API DerivedFieldSources {
public:
    virtual ~DerivedFieldSources();

    /// The names of the fields that the expression of a derived field reads itself, each once: data fields, then
    /// derived ones. None for a name that is no derived field's. May be called from any thread.
    virtual std::vector<std::string> GetFieldsRead(const std::string& derivedField) const = 0;

protected:
    DerivedFieldSources() = default;
    DerivedFieldSources(const DerivedFieldSources&) = default;
    DerivedFieldSources& operator=(const DerivedFieldSources&) = default;
};

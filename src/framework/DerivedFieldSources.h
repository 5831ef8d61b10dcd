#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/TransformationDictionary.h"

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

namespace nbscore {

/// The names of the data fields that derived fields are computed from, directly or through other derived fields.
/// Nothing where that is not known: the dictionary is no DerivedFieldSources.
/// @param names those that are no derived field's add nothing.
SCOREFRAMEWORK_API std::optional<std::set<std::string>> FindFieldsOfDerivedFields(
    const TransformationDictionary& derivedFields, const std::set<std::string>& names);

}  // namespace nbscore

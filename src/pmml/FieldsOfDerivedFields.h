#pragma once

#include <optional>
#include <set>
#include <string>

#include "framework/Export.h"
#include "framework/TransformationDictionary.h"

namespace nbscore {

/// The names of the data fields that derived fields are computed from, directly or through other derived fields.
/// Nothing where that is not known: the dictionary is no DerivedFieldSources.
/// @param names those that are no derived field's add nothing.
SCOREFRAMEWORK_API std::optional<std::set<std::string>> FindFieldsOfDerivedFields(
    const TransformationDictionary& derivedFields, const std::set<std::string>& names);

}  // namespace nbscore

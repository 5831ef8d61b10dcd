#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/TransformationDictionary.h"

/// A face that derived fields may have beside TransformationDictionary: they tell what they are computed from. To be
/// asked for by `dynamic_cast<const DerivedFieldSources*>(derivedFields)`.
class SCOREFRAMEWORK_API DerivedFieldSources {
public:
    virtual ~DerivedFieldSources();

    /// The names of the fields that the expression of a derived field reads itself, each once: data fields, then
    /// derived ones. None for a name that is no derived field's. May be called from any thread.
    virtual std::vector<std::string> GetFieldsRead(const std::string& derivedField) const = 0;
    /// The names of the data fields that a derived field is computed from, directly or through other derived fields,
    /// each once. None where that takes a look at more than `mostFields` fields, or where it is not known: so the time
    /// is bounded. May be called from any thread.
    virtual std::vector<std::string> FindFewSources(const std::string& /*derivedField*/,
                                                    std::size_t /*mostFields*/) const {
        return {};
    }
    /// How a derived field is computed, on one line for people; empty where that is not known. May be called from any
    /// thread.
    virtual std::string Describe(const std::string& /*derivedField*/) const { return {}; }
    /// The functions that the document defines for its derived fields, each on a line for people.
    virtual std::vector<std::string> DescribeFunctions() const { return {}; }

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

/// The data fields that one derived field is computed from. Where all of them have values and the derived field has
/// none, such as for a number in no bin, theirs are values that a model does not know.
class SCOREFRAMEWORK_API SourceFields {
public:
    /// So many fields are looked at, derived ones among them.
    static constexpr std::size_t mostFields = 16;

    /// Has no fields where there are more, and where it is not known which they are.
    /// @param name of the derived field.
    /// @param dictionary of the data fields, which are borrowed from it.
    SourceFields(const TransformationDictionary& derivedFields, const std::string& name,
                 const ScoreDictionary& dictionary);

    /// Whether there are fields and each has a value that it does not call missing.
    bool HaveValues(const ScoreCaseRecord& record) const;
    /// Their values, of a case that has them, with commas between them.
    std::string ListValues(const ScoreCaseRecord& record) const;

private:
    std::vector<std::pair<std::string, const ScoreDictVar*>> fields;
};

}  // namespace nbscore

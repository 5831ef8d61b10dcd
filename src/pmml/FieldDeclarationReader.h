#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "framework/BaseDictVar.h"
#include "framework/Export.h"
#include "framework/ValueInterval.h"
#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"

/// @file
/// Reads what a document declares about a field, data field or derived field: its kind, its shown name, its values and
/// ranges.

namespace nbscore {

/// What is wrong with the declarations of fields, kept until it is known which fields are used: a document is refused
/// for those alone. Lives no longer than the document.
class SCOREFRAMEWORK_API FieldFaults {
public:
    struct Fault {
        Element element;
        /// Has no place yet: to find its path takes a walk over the document, and faults may be many.
        VeskException refusal;
    };

    FieldFaults();
    ~FieldFaults();
    FieldFaults(const FieldFaults&) = delete;
    FieldFaults& operator=(const FieldFaults&) = delete;

    void Add(const std::string& field, const Fault& fault);
    bool IsEmpty() const { return faults.empty(); }
    /// Throws the fault of a field that has one, with its place.
    void RequireSound(const std::string& field) const;

private:
    std::map<std::string, Fault> faults;
};

/// What counts instead of what the element of a field says itself.
struct DeclaredElsewhere {
    /// As the attribute is spelt.
    std::optional<std::string_view> optype = {};
    std::optional<ScoreDictVar::StorageType> storage = {};
};

/// The variable that a DataField or DerivedField element declares. Throws VeskException 2, 9, 10 or 12 with the place
/// of the element at fault.
///
/// `dataType` integer, float and double hold numbers, all others text, which of boolean stands for truth values. A
/// missing `dataType` means numbers when `optype` is continuous, else text; a missing `optype` means continuous for
/// numbers without declared values, else categorical. Texts keep every blank. A missing or invalid value that is no
/// number is kept as text, so that it meets its like.
std::unique_ptr<BaseDictVar> ReadFieldDeclaration(Element field, const std::string& name, const Transcoder& transcoder,
                                                  const DeclaredElsewhere& instead = {});

/// The same of a field that may turn out to be unused: where the declaration is wrong, that is told instead of thrown,
/// and the variable has the field's storage type and nothing else.
std::unique_ptr<BaseDictVar> ReadFieldDeclaration(Element field, const std::string& name, const Transcoder& transcoder,
                                                  std::optional<FieldFaults::Fault>& fault,
                                                  const DeclaredElsewhere& instead = {});

/// Whether a DataField or DerivedField element holds numbers or texts, by the same rule.
SCOREFRAMEWORK_API ScoreDictVar::StorageType ReadStorageType(Element field);

/// True for the data types whose values are held as numbers: integer, float and double.
SCOREFRAMEWORK_API bool IsNumericDataType(std::string_view dataType);

/// The range that an Interval element declares. Throws VeskException, without a place: 2 without `closure`, 12 for a
/// closure that is none, 9 for a margin that is present and no number.
ValueInterval ReadInterval(Element interval);

}  // namespace nbscore

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "framework/BaseDictVar.h"
#include "framework/Export.h"
#include "framework/Transcoder.h"
#include "framework/XmlFwd.h"
#include "framework/dictionary/FieldFaults.h"

namespace nbscore {

/// The variable that a DataField or DerivedField element declares: its kind, its shown name, its declared values and
/// ranges. Throws VeskException 2, 9 or 12 with the place of the element at fault.
///
/// `dataType` integer, float and double hold numbers, all others text, which of boolean stands for truth values. A
/// missing `dataType` means numbers when `optype` is continuous, else text; a missing `optype` means continuous for
/// numbers without declared values, else categorical. Texts keep every blank.
std::unique_ptr<BaseDictVar> ReadFieldDeclaration(const xercesc::DOMElement* field, const std::string& name,
                                                  const Transcoder& transcoder);

/// The same of a field that may turn out to be unused: where the declaration is wrong, that is told instead of thrown,
/// and the variable has the field's storage type and nothing else.
std::unique_ptr<BaseDictVar> ReadFieldDeclaration(const xercesc::DOMElement* field, const std::string& name,
                                                  const Transcoder& transcoder,
                                                  std::optional<FieldFaults::Fault>& fault);

/// Whether a DataField or DerivedField element holds numbers or texts, by the same rule.
SCOREFRAMEWORK_API ScoreDictVar::StorageType ReadStorageType(const xercesc::DOMElement* field);

}  // namespace nbscore

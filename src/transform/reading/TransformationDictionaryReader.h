#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoringRule.h"
#include "framework/TransformationDictionary.h"
#include "pmml/DocumentTree.h"
#include "pmml/FaultList.h"
#include "pmml/RefusalTable.h"
#include "pmml/Transcoder.h"

namespace nbscore {

/// The derived fields of a TransformationDictionary element; an empty element gives an empty dictionary.
///
/// Fields may refer to one another in any order. Extension elements are ignored. Throws, with the place of the
/// element at fault, VeskException 1 for an element that does not belong there or a field without an expression,
/// 2 for a field without a name, 8 for a reference to no field, 11 for what is not supported (Aggregate, Lag, a
/// TableLocator, an unknown function), 12 for a name that a data field or an earlier derived field has, for a
/// field that depends on itself, and for one whose functions take too much work; and what the readers of the kinds of
/// expressions throw; and CancelledError.
/// @param limits for computing the fields later; reading asks the document's own limits.
std::unique_ptr<TransformationDictionary> ReadTransformationDictionary(Element element,
                                                                       const ScoreDictionary* dictionary,
                                                                       const Transcoder& transcoder,
                                                                       const Limits& limits = {});

/// A field that is computed like a derived field and stands in no list of them: what an input or an output is computed
/// from. Its element declares it and has its expression inside.
struct FieldByItself {
    Element element;
    /// What other fields know it by. It hides a field of the dictionary that has the same name from all but itself: by
    /// that name its own expression reads that field.
    std::string name;
    /// Whether it holds numbers or texts; nothing where the element says so.
    std::optional<ScoreDictVar::StorageType> storage;
};

/// All that one dictionary of derived fields is made of.
struct DerivedFieldElements {
    /// TransformationDictionary and LocalTransformations elements.
    std::vector<Element> lists = {};
    /// Whether fields of the lists are left out, and only their functions are read.
    bool takesOnlyFunctions = false;
    /// What fields of the lists hold instead of what they say, by name.
    std::map<std::string, ScoreDictVar::StorageType> storages = {};
    /// Behind those of the lists.
    std::vector<FieldByItself> others = {};
    /// What a reference to no field is refused with.
    Refusal unknownField = Refusal::FieldUnknown;
    /// By which their declarations are understood (DeclaredValidity); by the standard's one, truth values are stored in
    /// one spelling as well (AsTruthText).
    ScoringRule rule = ScoringRule::Smoothed;
    /// Whether the dictionary is to tell how fields are computed (DerivedFieldSources::Describe).
    bool keepTexts = true;
};

/// The same of several elements, whose fields may all refer to one another.
/// @param faults takes what each field has wrong, so that the others are read all the same; the dictionary cannot be
///     used then.
SCOREFRAMEWORK_API std::unique_ptr<TransformationDictionary> ReadDerivedFields(const DerivedFieldElements& elements,
                                                                               const ScoreDictionary* dictionary,
                                                                               const Transcoder& transcoder,
                                                                               const Limits& limits, FaultList& faults);

}  // namespace nbscore

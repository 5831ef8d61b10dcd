#pragma once

#include <memory>

#include "framework/Limits.h"
#include "framework/ScoreDictionary.h"
#include "framework/TransformationDictionary.h"
#include "pmml/DocumentTree.h"
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

}  // namespace nbscore

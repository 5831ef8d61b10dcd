#pragma once

#include <string>

#include "pmml/DocumentTree.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads a MiningSchema: gives every mining field of the first model element its role, notes the active
/// fields in order, and makes the target's encoder.
///
/// The schemas of later model elements share the first one's roles and target: they note their active fields, make
/// predictors of those that have no role yet, and name their target.
///
/// Throws VeskException 5 for a field that its dictionary does not know, 1 for one that is listed twice. A
/// second predicted field is thrown as a *pointer* to a new VeskException 12, unlike everything else. This is
/// deliberate and part of the interface; whoever catches it deletes it.
/// @return the predicted field's name, empty when there is none.
std::string ReadMiningSchema(Element schema, int modelIndex, DocumentReading& reading);

}  // namespace nbscore

#pragma once

#include <memory>

#include "framework/document/DocumentTree.h"
#include "translator/ModelUnderConstruction.h"

namespace nbscore {

/// The kind of model that a document asks for, still empty.
///
/// The first model element's algorithm decides; the dictionary's mark of a self-learning target counts only
/// in a document that has no model element at all.
/// @param firstModelElement none when the document has none.
/// @param root where the fault stands then.
std::unique_ptr<ModelUnderConstruction> MakeModel(Element firstModelElement, bool dictionaryMarksTarget, Element root);

}  // namespace nbscore

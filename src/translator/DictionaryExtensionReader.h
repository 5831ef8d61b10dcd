#pragma once

#include <string>

#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"

namespace nbscore {

/// Looks in the data dictionary for a field that is marked as the target of a self-learning model: one with
/// an Extension, at any depth, of the name "isSelfLearningTarget" and the value "true". The building of the
/// dictionary itself is the framework's.
///
/// Ends at the first such field: what is wrong behind it is not seen. Throws VeskException 1 for a child that
/// is no DataField and for a field without a name.
/// @param dataDictionary none is refused, too.
/// @param targetName filled with the field's name.
/// @return true when there is such a field.
bool ReadDictionaryExtension(const Transcoder& transcoder, Element dataDictionary, std::string& targetName);

}  // namespace nbscore

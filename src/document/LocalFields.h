#pragma once

#include "document/AdaptationLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Moves the derived fields in the LocalTransformations of the models read, as far as their inputs need them, to the
/// TransformationDictionary, which is made behind the DataDictionary where there is none. What no input needs stays and
/// is ignored.
///
/// A field that several sub-models declare alike is moved once. Throws VeskException 12, with the place, where a field
/// would mean something else there: it has the name of a data field, of a derived field of the whole document, or of
/// another one of a model; or what does not see it would come to read it. Names are compared without the blanks around
/// them.
void MoveLocalFields(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log);

}  // namespace nbscore

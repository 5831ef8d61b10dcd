#pragma once

#include "document/IgnoredLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Notes the models of a document that are not read, and a set of models around one that is read alone.
void NoteIgnoredModels(const xercesc::DOMElement& root, const ModelsRead& models, IgnoredLog& log);

}  // namespace nbscore

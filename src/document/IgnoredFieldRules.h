#pragma once

#include "document/IgnoredLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Notes what is said in vain about the values of fields: in the data dictionary (declared validity, second
/// declarations, a wrong number of fields) and in the mining schemas (missing and invalid values, outliers, optype).
/// Rules for fields that no input and no derived field uses change nothing and are passed over.
void NoteIgnoredFieldRules(const xercesc::DOMElement& root, const ModelsRead& models, IgnoredLog& log);

}  // namespace nbscore

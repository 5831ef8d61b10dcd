#pragma once

#include "document/AdaptationLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Takes blanks (space, tab, line ends) off both ends of field names and category values: of data fields, mining fields,
/// inputs, outputs and counts. A text of nothing but blanks stays, and so does everything in a document with derived
/// fields, which may use any name and give any text. Throws VeskException 12, with the place, where two names or values that differ would
/// become one.
void TakeBlanksOff(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log);

}  // namespace nbscore

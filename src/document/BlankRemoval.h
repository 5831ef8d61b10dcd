#pragma once

#include "document/AdaptationLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Takes blanks (space, tab, line ends) off both ends of field names and category values: of data fields, derived
/// fields and what their expressions read, mining fields, inputs, outputs, counts and, names
/// alone, test cases. A text of nothing but blanks stays.
///
/// Where derived fields could tell the difference the blanks stay, and the log says why: around the values of a text
/// field that an expression reads or gives, and around names that tell a derived field from another field. Expressions
/// see no names, and numbers are the same with blanks and without.
///
/// Throws VeskException 12, with the place, where two names or values that differ would become one.
void TakeBlanksOff(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log);

}  // namespace nbscore

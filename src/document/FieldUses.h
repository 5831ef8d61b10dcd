#pragma once

#include <set>

#include "document/ElementSteps.h"

namespace nbscore {

using FieldNames = std::set<XmlText>;

/// The fields that the inputs of a model name.
FieldNames FindInputFields(const xercesc::DOMElement& model);

/// The fields that expressions of the document's derived fields read.
/// @param root the document's root element.
FieldNames FindFieldsOfExpressions(const xercesc::DOMElement& root);

}  // namespace nbscore

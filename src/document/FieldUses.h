#pragma once

#include <set>

#include "document/ElementSteps.h"

namespace nbscore {

using FieldNames = std::set<XmlText>;

/// The fields that the inputs of a model name.
FieldNames FindInputFields(const xercesc::DOMElement& model);

/// The fields that derived fields of the document are computed from, in one step or several.
/// @param root the document's root element.
/// @param wanted the names that count; those of fields that are not derived add nothing.
FieldNames FindFieldsOfExpressions(const xercesc::DOMElement& root, const FieldNames& wanted);

}  // namespace nbscore

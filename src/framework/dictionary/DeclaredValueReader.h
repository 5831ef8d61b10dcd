#pragma once

#include "framework/BaseDictVar.h"
#include "framework/Transcoder.h"
#include "framework/XmlFwd.h"

namespace nbscore {

enum class ValueProperty { Valid, Invalid, Missing };

/// What a Value element says of its value; valid when it says nothing. Throws VeskException 12, without a place, for
/// other words.
ValueProperty ReadValueProperty(const xercesc::DOMElement* value);

/// Adds the value of a Value element to its variable: a valid one as a declared value, a missing one as a missing
/// value, an invalid one as an invalid value. Throws VeskException, without a place: 2 without `value`, 9 for a valid
/// value of a numeric variable that is no number. A *missing* or *invalid* value that is no number is kept as text, so
/// that it meets its like.
void ReadDeclaredValue(const xercesc::DOMElement* value, const Transcoder& transcoder, BaseDictVar& variable);

}  // namespace nbscore

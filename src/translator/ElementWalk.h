#pragma once

#include "framework/VeskException.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// True for an element of this name; false for none at all.
bool HasName(const xercesc::DOMElement* element, const XMLCh* name);

/// True when both texts are the same; a null text is the same as an empty one.
bool SameText(const XMLCh* text, const XMLCh* other);

/// Refuses the document unless the element is there and has this name. The fault stands at the element, or at
/// its parent when there is none.
void RequireName(const xercesc::DOMElement* element, const XMLCh* name, const xercesc::DOMElement* parent,
                 VeskException::ExceptionCode code, const char* message);

}  // namespace nbscore

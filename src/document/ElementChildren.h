#pragma once

#include <string>

#include "framework/XmlFwd.h"

/// @file
/// Small steps over elements that are only read.

namespace nbscore {

/// A name without its prefix: what stands behind the last colon.
const XMLCh* WithoutPrefix(const XMLCh* name);
std::string WithoutPrefix(const std::string& name);

/// The only child element of this name, or null; throws VeskException 12 when there are two.
const xercesc::DOMElement* OnlyChildNamed(const xercesc::DOMElement& parent, const XMLCh* name);

/// The attribute as UTF-8, or a default where it is absent.
std::string AttributeOr(const xercesc::DOMElement& element, const XMLCh* name, const std::string& absent);
/// The attribute as a number, or a default where it is absent; throws VeskException 9 where it is none.
double NumberAttributeOr(const xercesc::DOMElement& element, const XMLCh* name, double absent);

}  // namespace nbscore

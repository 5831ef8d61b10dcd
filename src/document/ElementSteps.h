#pragma once

#include <xercesc/dom/DOMElement.hpp>

#include <string>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentOrder.h"

/// @file
/// Small steps over a document's elements. Every list is made at once, so that the document may be changed after.
/// Making one throws CancelledError when the limits of the document say so.

namespace nbscore {

using XmlText = std::basic_string<XMLCh>;

bool IsNamed(const xercesc::DOMNode* element, const XMLCh* name);
/// A null text is the same as an empty one.
bool HoldsText(const XMLCh* text, const XMLCh* other);

std::vector<xercesc::DOMElement*> ChildElements(const xercesc::DOMElement& parent);
std::vector<xercesc::DOMElement*> ChildrenNamed(const xercesc::DOMElement& parent, const XMLCh* name);
/// The only child element of this name, or null; throws VeskException 12 when there are two.
const xercesc::DOMElement* OnlyChildNamed(const xercesc::DOMElement& parent, const XMLCh* name);
/// At any depth, in document order.
std::vector<xercesc::DOMElement*> DescendantsNamed(xercesc::DOMNode& top, const XMLCh* name);

/// The attribute as UTF-8, or a default where it is absent.
std::string AttributeOr(const xercesc::DOMElement& element, const XMLCh* name, const std::string& absent);
/// The attribute as a number, or a default where it is absent; throws VeskException 9 where it is none.
double NumberAttributeOr(const xercesc::DOMElement& element, const XMLCh* name, double absent);

}  // namespace nbscore

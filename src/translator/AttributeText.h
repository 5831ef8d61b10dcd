#pragma once

#include <string>

#include "framework/Transcoder.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The attribute's text in the transcoder's encoding; empty when the element has no such attribute.
/// Throws VeskException 10, with the element's place, when the encoding cannot hold it.
std::string AttributeText(const Transcoder& transcoder, const xercesc::DOMElement& element, const XMLCh* name);

/// The same; throws VeskException 2 when the element has no such attribute.
std::string RequiredText(const Transcoder& transcoder, const xercesc::DOMElement& element, const XMLCh* name);

}  // namespace nbscore

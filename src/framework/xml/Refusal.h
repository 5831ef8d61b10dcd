#pragma once

#include <string>

#include "framework/DocumentPlace.h"
#include "framework/Export.h"
#include "framework/Transcoder.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Where a node stands: its path, and its line and column when the framework's own parser read the document.
/// Takes time proportional to the document: for refusals only.
SCOREFRAMEWORK_API DocumentPlace PlaceOf(const xercesc::DOMNode* node);

/// The exception for a fault at a node, place included.
SCOREFRAMEWORK_API VeskException RefusalAt(const xercesc::DOMNode* node, VeskException::ExceptionCode code,
                                           const std::string& message);

/// How messages speak of an element, or of the document where that is null.
std::string NameForMessage(const xercesc::DOMNode* node);

/// The exception for a required attribute that is not there, without a place.
VeskException AttributeLacking(const xercesc::DOMElement* element, const XMLCh* name);

/// Does something that knows no place, and gives its complaint the node's.
template <typename Work>
auto Placed(const xercesc::DOMNode* node, const Work& work) {
    try {
        return work();
    } catch (VeskException& refusal) {
        refusal.SetPlace(PlaceOf(node));
        throw;
    }
}

/// A required attribute as a number; throws VeskException 2 or 9 with the element's place.
SCOREFRAMEWORK_API double RequiredDouble(const xercesc::DOMElement* element, const XMLCh* name);
/// Any text of an element (an attribute's, mostly) as a number; throws VeskException 9 with the element's place.
SCOREFRAMEWORK_API double DoubleAt(const xercesc::DOMElement* element, const XMLCh* text);
SCOREFRAMEWORK_API int IntAt(const xercesc::DOMElement* element, const XMLCh* text);
/// The same text in the transcoder's encoding, empty for null; throws VeskException 10 with the element's place when
/// the encoding cannot hold it.
SCOREFRAMEWORK_API std::string TextAt(const xercesc::DOMElement* element, const XMLCh* text,
                                      const Transcoder& transcoder);

}  // namespace nbscore

#pragma once

#include "framework/Export.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The node that follows in document order, within the part of the document below `top` and `top` itself; null behind
/// the last one. A null top is the whole document.
SCOREFRAMEWORK_API const xercesc::DOMNode* NextInDocumentOrder(const xercesc::DOMNode* node,
                                                               const xercesc::DOMNode* top = nullptr);

}  // namespace nbscore

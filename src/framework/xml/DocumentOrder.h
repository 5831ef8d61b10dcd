#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The node that follows in document order, within the part of the document below `top` and `top` itself; null behind
/// the last one. A null top is the whole document.
SCOREFRAMEWORK_API const xercesc::DOMNode* NextInDocumentOrder(const xercesc::DOMNode* node,
                                                               const xercesc::DOMNode* top = nullptr);

/// Every element of this name below a node, at any depth, in document order.
///
/// Walks the nodes itself: the parser's own list of them stays with the document for good, and a document's many lists
/// are searched one by one for each new one.
SCOREFRAMEWORK_API std::vector<const xercesc::DOMElement*> DescendantsNamed(const xercesc::DOMNode& top,
                                                                            const XMLCh* name);

}  // namespace nbscore

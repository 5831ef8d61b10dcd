#pragma once

#include "framework/XmlFwd.h"
#include "pmml/DomDocument.h"

namespace nbscore {

/// As XmlServices::WriteDom, but that the library's own exceptions may leave it.
DomDocument WriteDomOf(const DocumentTree& tree);
/// As XmlServices::FindTree.
const DocumentTree* FindTreeOf(const xercesc::DOMDocument* document);

}  // namespace nbscore

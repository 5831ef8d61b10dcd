#pragma once

#include <vector>

#include "document/IgnoredConstruct.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// What a document that the plug-in reads says in vain, in document order: one entry for each kind, however often it is
/// there. Only what is truly read over and could change an answer is told, of the model elements that are read.
/// Takes time proportional to the document.
std::vector<IgnoredConstruct> FindIgnoredConstructs(xercesc::DOMDocument& document);

/// Those of them that are warnings; also of a document that the plug-in refuses.
std::vector<IgnoredConstruct> FindWarnings(xercesc::DOMDocument& document);

}  // namespace nbscore

#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vector>

#include "framework/XmlFwd.h"

namespace nbscore {

/// The MiningField elements of a schema that are read: its own, then those of the extension that lists derived inputs.
/// What other extensions hold lists nothing.
std::vector<xercesc::DOMElement*> FindSchemaFields(const xercesc::DOMElement& schema);

}  // namespace nbscore

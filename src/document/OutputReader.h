#pragma once

#include <vector>

#include "document/VerificationSuite.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// What the Output of a model element declares; nothing when it has none. An OutputField without a name cannot be
/// referred to and is left out. Throws VeskException 9 for a rank that is no whole number and 12 for a name declared
/// twice.
std::vector<OutputDeclaration> ReadOutput(const xercesc::DOMElement& modelElement);

}  // namespace nbscore

#pragma once

#include <vector>

#include "document/VerificationSuite.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Reads the ModelVerification of each model element that the plug-in reads, in document order. Takes time proportional
/// to the document.
///
/// Throws VeskException, with the place: 1 for a part that is missing, 11 for a TableLocator, which points outside the
/// document, 12 for parts that contradict each other (two of what may be there once, a recordCount or fieldCount that
/// is not the true number), and those of the readers of fields, rows and outputs.
std::vector<VerificationSuite> ReadVerificationSuites(xercesc::DOMDocument& document);

}  // namespace nbscore

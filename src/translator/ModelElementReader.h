#pragma once

#include "framework/XmlFwd.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads one NaiveBayesModel element: the threshold, of a self-learning document also the sub-model's name, then the
/// children in document order. Unknown children are passed over. The mining schema must stand before the inputs and the
/// output, which rely on what it yields.
///
/// Throws VeskException 5 for a threshold of 0 (negative and tiny ones are taken as they stand), 1 when the
/// inputs or the output are missing, and what the readers of the children throw.
void ReadModelElement(const xercesc::DOMElement& modelElement, int modelIndex, DocumentReading& reading);

}  // namespace nbscore

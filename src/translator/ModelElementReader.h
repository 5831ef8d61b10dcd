#pragma once

#include "pmml/DocumentTree.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads one NaiveBayesModel element: the threshold, of a self-learning document also the sub-model's name, which is
/// required and may be empty, then the children in document order. Unknown children are ignored. The mining schema must
/// stand before the inputs and the output, which rely on what it yields.
///
/// Throws VeskException 5 for a threshold of 0 (negative and tiny ones are taken as they stand) and for other than two
/// categories or another target where sub-models share one, 1 when the inputs or the output are missing, 2 for what an
/// element must say and does not, 8 for the output of another field than the target, 12 for counts that would take too
/// much memory, and what the readers of the children throw.
void ReadModelElement(Element modelElement, int modelIndex, DocumentReading& reading);

}  // namespace nbscore

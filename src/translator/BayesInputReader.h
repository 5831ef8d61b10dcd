#pragma once

#include "pmml/DocumentTree.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads the inputs inside a BayesInputs, in order: gives the model each one's variable, encoder and counts.
///
/// Throws VeskException 12 for an element that is no BayesInput, 7 and 8 for an input that the mining schema
/// or the dictionaries do not know, 1 for an element that is no PairCounts, 7 for a value that the variable
/// does not declare, and what ReadDiscretization and ReadTargetValueCounts throw. A document whose counts
/// and categories would take too much memory is refused with 12.
/// @return how many inputs there were.
int ReadBayesInputs(Element inputs, DocumentReading& reading);

}  // namespace nbscore

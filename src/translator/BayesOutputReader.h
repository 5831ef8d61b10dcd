#pragma once

#include "framework/XmlFwd.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads a BayesOutput: the counts of the target's categories, which the model gets.
///
/// Throws VeskException 2 when its field is not named, 8 when it is not the target, 5 when a self-learning document
/// has not exactly two target categories, 12 when the counts would take too much memory, and what
/// ReadTargetValueCounts throws.
void ReadBayesOutput(const xercesc::DOMElement& output, DocumentReading& reading);

}  // namespace nbscore

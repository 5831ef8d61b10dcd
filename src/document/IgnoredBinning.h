#pragma once

#include "document/IgnoredLog.h"

namespace nbscore {

/// Notes what the Discretize inside a model's inputs says in vain: inputs take only the margins between bins, put
/// values on a margin into the bin below it and number bins as they stand.
void NoteIgnoredBinning(const xercesc::DOMElement& model, IgnoredLog& log);

}  // namespace nbscore

#pragma once

#include "document/IgnoredLog.h"

namespace nbscore {

/// Notes what a model element that is read says in vain beside its inputs: isScorable, priors of its Targets, output
/// fields that are no prediction and no probability, derived fields of its own, and all but its last BayesOutput.
void NoteIgnoredModelParts(const xercesc::DOMElement& model, IgnoredLog& log);

}  // namespace nbscore

#pragma once

#include "document/AdaptationLog.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Takes out what the standard allows, the plug-in refuses, and scoring has no use for: Extension and Taxonomy in the
/// data dictionary; Extension in a BayesInput or BayesOutput and all that is in them; in a self-learning document a
/// model's Extension that is none of its assessment figures and whose value is no number. Model elements in what goes
/// are gone too: ask which are read (FindModelsRead) only afterwards.
void LeaveMeaninglessElementsOut(xercesc::DOMDocument& document, AdaptationLog& log);

}  // namespace nbscore

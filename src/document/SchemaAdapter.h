#pragma once

#include "document/AdaptationLog.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// Says in the plug-in's words what a model says of its fields: `usageType="target"` becomes `predicted`, a BayesOutput
/// without `fieldName` gets the schema's target, and a BayesInput over a derived field that the schema does not list
/// gets listed. Throws VeskException 12, with the place, where an output's target is not clear.
void AdaptSchemas(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log);

}  // namespace nbscore

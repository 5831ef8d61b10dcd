#pragma once

#include <string>
#include <vector>

#include "check/DocumentCheck.h"

namespace nbscore {

/// A check as text for people: what the document holds, then what is wrong, each with what to do about it.
std::string WriteCheckAsText(const DocumentCheck& check);

/// Checks as one JSON document for machines: `{"documents": [{"document": …, "sound": …, "kind": …, …}]}`. What is not
/// known is null; names and keys are fixed.
std::string WriteChecksAsJson(const std::vector<DocumentCheck>& checks);

/// `single classifier`, `set of sub-models` or `unknown kind of model`.
std::string NameModelKind(ScoreModel::ModelType type);

}  // namespace nbscore

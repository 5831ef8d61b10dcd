#pragma once

#include "framework/ScoreDictVar.h"
#include "framework/transform/ValueKind.h"

namespace nbscore {

/// What expressions see of a variable's values: numbers, texts, or truth values, which are kept as texts. One of these
/// is a truth value where it reads as one, else the text as it stands (ReadAs).
ValueKind KindOfField(const ScoreDictVar& variable);

}  // namespace nbscore

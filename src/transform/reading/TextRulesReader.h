#pragma once

#include "pmml/DocumentTree.h"
#include "transform/reading/FieldScope.h"
#include "transform/text/TextRules.h"

namespace nbscore {

/// The attributes by which TextIndex and TextIndexNormalization say how terms are looked for; those that are absent
/// stay as the defaults have them. Throws VeskException 5 for a regular expression that cannot be used and a distance
/// below zero, 9 for a distance that is no whole number, 11 for a distance without words.
TextRules ReadTextRules(Element element, const TextRules& defaults, FieldScope& scope);

}  // namespace nbscore

#pragma once

#include "pmml/DocumentTree.h"
#include "transform/reading/FieldScope.h"
#include "transform/text/TextNormalization.h"

namespace nbscore {

/// Reads a TextIndexNormalization element.
/// @param inherited how its TextIndex looks for terms: it does the same where it says nothing.
TextNormalization ReadTextNormalization(Element element, const TextRules& inherited, FieldScope& scope);

}  // namespace nbscore

#pragma once

#include <set>

#include "document/ElementSteps.h"
#include "document/ModelsRead.h"

namespace nbscore {

/// The texts with blanks around them that the test cases of models name as values: in cells, in the values of output
/// fields, and behind `probability_` in the names of expected results.
std::set<XmlText> FindTestedTextsWithBlanks(const ModelsRead& models);

}  // namespace nbscore

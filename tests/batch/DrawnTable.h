#pragma once

#include <cstddef>

#include "batch/InputTable.h"
#include "framework/ModelTables.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// Cases for a model: for each of its inputs, in the order in which predictors first name them, what its predictors
/// know, numbers just beside that, and what none of them knows; numbers for texts, texts for numbers.
InputTable DrawTable(const ModelTables& model, std::size_t cases, Randomness& random);

}  // namespace nbscore::test

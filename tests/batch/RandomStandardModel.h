#pragma once

#include <cstddef>
#include <memory>

#include "batch/InputTable.h"
#include "standard/StandardModel.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// A model by the standard's rule of every shape: inputs of all kinds, some over the same field or over a derived one,
/// fields with declarations and treatments drawn at random, some of which no input reads.
std::unique_ptr<StandardModel> MakeRandomStandardModel(Randomness& random);

/// Cases for it: a column for each of its fields, derived ones among them, of values that it may know, or may not.
InputTable DrawCases(const StandardModel& model, std::size_t cases, Randomness& random);

}  // namespace nbscore::test

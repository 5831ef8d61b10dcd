#pragma once

#include <cstddef>

#include "batch/ResolvedCases.h"
#include "framework/ScoreModel.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// Draws so many cases for a model, single or a set, and expects batches cut anyhow to answer what the model itself
/// answers one by one, bit for bit, and a row the same. Some of the batches run on four threads at once, with one
/// scorer.
void ExpectBatchesLikeOneByOne(ScoreModel& model, std::size_t cases, Randomness& random);

/// The same for cases that were handed to the model before.
void ExpectBatchesLike(const ResolvedCases& cases, const ScoreModel& model, Randomness& random);

}  // namespace nbscore::test

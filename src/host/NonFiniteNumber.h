#pragma once

#include "framework/ScoreResult.h"

namespace nbscore {

/// True when some probability of a result is no number or infinite: the arithmetic broke down, which takes an extreme
/// threshold or counts.
bool HasNonFiniteNumber(const ScoreResult& result);

}  // namespace nbscore

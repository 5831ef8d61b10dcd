#pragma once

#include <cstddef>
#include <vector>

#include "framework/ScoreResult.h"
#include "selflearning/SelfLearningResult.h"

namespace nbscore {

/// What one sub-model of a set says of a case.
using SubModelScore = SelfLearningResult::ModelDescriptor;

/// The result's scores, one per sub-model in their order; they stay the result's own. Null when it holds none: a
/// plug-in may answer with any kind of result.
const std::vector<SubModelScore>* FindSubModelScores(const ScoreResult& result);

/// The same. Throws UnscorableModelError when the result holds none.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result);

/// The same. Throws also when there are not as many as there are sub-models.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result, std::size_t numSubModels);

}  // namespace nbscore

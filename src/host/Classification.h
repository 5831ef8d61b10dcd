#pragma once

#include "framework/ScoreClsResult.h"

namespace nbscore {

/// The result as a classification that has a prediction. Throws UnscorableModelError when it is none: a plug-in may
/// answer with any kind of result.
const ScoreClsResult& RequireClassification(const ScoreResult& result);

}  // namespace nbscore

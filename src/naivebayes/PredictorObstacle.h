#pragma once

#include <string>

#include "naivebayes/ClassifierParts.h"

/// @file
/// What would stop the process when a classifier's predictors are encoded and multiplied, found beforehand.
///
/// Every index that EncodePredictors and JointProbability take is answered for here: a change of the one is a change
/// of the other.

namespace nbscore {

/// Why some case cannot be scored, as a sentence that names the predictor at fault; empty when all can. The
/// classifier must have a target and count it.
std::string FindPredictorsObstacle(const ClassifierParts& classifier);

}  // namespace nbscore

#pragma once

#include <vector>

#include "framework/ModelTables.h"
#include "naivebayes/ClassifierParts.h"

namespace nbscore {

/// Lays a classifier open by its parts, which must fit together (FindScoringObstacle). The name is left empty.
ClassifierTables TabulateClassifier(const ClassifierParts& classifier, std::vector<double> priors);

}  // namespace nbscore

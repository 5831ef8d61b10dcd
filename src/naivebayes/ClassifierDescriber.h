#pragma once

#include "framework/ModelDescription.h"
#include "naivebayes/ClassifierParts.h"

namespace nbscore {

/// Describes a classifier by its parts: predictors, tables and target counts. What lists lack is left out.
ClassifierDescription DescribeClassifier(const ClassifierParts& classifier, double threshold);

/// The target's categories as text, in order.
std::vector<std::string> DescribeCategories(const std::vector<ScoreValue*>& categories);

}  // namespace nbscore

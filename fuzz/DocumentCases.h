#pragma once

#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/ScoreModel.h"

namespace nbscore::fuzz {

/// Some cases over all fields of a model's dictionary: values that the document declares, values that it does not,
/// texts where it has numbers and the other way round, numbers at the limits, missing ones.
std::vector<BaseCaseRecord> MakeCases(const ScoreModel& model);

}  // namespace nbscore::fuzz

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"

namespace nbscore {

/// The names of a set's sub-models, in order, as the document has them: they may be equal or empty. Nothing for a model
/// that is no set.
///
/// A set tells them only with a score, so a case without any value is scored. It has no positions, which leaves the
/// model free to take those of the first real case. The model must be scorable (LoadedModel::RequireScorable). Throws
/// UnscorableModelError when it gives no scores.
std::optional<std::vector<std::string>> FindSubModelNames(ScoreModel& model);

/// A label for each name, no two of them equal, for where sub-models must be told apart. It is the name itself where
/// that is neither empty nor the label of another; else the sub-model's index, counted from 0, joins it ("offer_3") or
/// stands for it ("3").
std::vector<std::string> LabelSubModels(const std::vector<std::string>& names);

}  // namespace nbscore

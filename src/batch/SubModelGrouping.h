#pragma once

#include <cstddef>
#include <vector>

#include "framework/ModelTables.h"

namespace nbscore {

/// Which sub-models are scored side by side: lists of positions, every sub-model in one of them.
///
/// Those of a list read the same variables in the same order. Side by side each takes room for all the categories of
/// all; where theirs differ too much for that, they are divided into shorter lists.
std::vector<std::vector<std::size_t>> GroupSubModels(const ModelTables& set);

}  // namespace nbscore

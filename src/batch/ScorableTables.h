#pragma once

#include "framework/ModelTables.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// The tables of a model that is fit for being scored from them. Throws std::invalid_argument, with a sentence for
/// people, when the model does not lay them open, cannot score every case, or has an encoder that nobody else knows.
ModelTables GetScorableTables(const ScoreModel& model);

}  // namespace nbscore

#pragma once

#include <optional>
#include <string>

#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The names of the data fields that a model's inputs are computed from where they are derived, directly or through
/// other derived fields; those that only derived fields read which no input uses are not among them.
///
/// Nothing where that is not known: the model has derived fields that are no DerivedFieldSources, or is no
/// ModelSelfDescription itself. Takes the time of a ModelSelfDescription where there are derived fields.
std::optional<SeededSet<std::string>> FindFieldsOfDerivedInputs(const ScoreModel& model);

}  // namespace nbscore

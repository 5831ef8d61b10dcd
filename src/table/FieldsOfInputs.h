#pragma once

#include <optional>
#include <set>
#include <string>

#include "framework/ScoreModel.h"

namespace nbscore {

/// The names of the data fields that a model's inputs read. The target is among them where an input reads it.
struct FieldsOfInputs {
    /// Inputs that are data fields themselves.
    std::set<std::string> asTheyAre;
    /// What inputs are computed from where they are derived, directly or through other derived fields. What only
    /// derived fields read which no input uses is not among them.
    std::set<std::string> ofDerivedInputs;
};

/// Nothing where they are not known: the model has derived fields that are no DerivedFieldSources, or is no
/// ModelSelfDescription itself. Takes the time of a ModelSelfDescription.
std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model);

}  // namespace nbscore

#pragma once

#include <optional>
#include <string>
#include <unordered_set>

#include "framework/ScoreModel.h"

namespace nbscore {

/// The names of the data fields that a model's inputs read. The target is among them where an input reads it.
struct FieldsOfInputs {
    /// Inputs that are data fields themselves.
    std::unordered_set<std::string> asTheyAre;
    /// What inputs are computed from where they are derived, directly or through other derived fields. What only derived
    /// fields read which no input uses is not among them.
    std::unordered_set<std::string> ofDerivedInputs;
};

/// Nothing where they are not known: the model has derived fields that are no DerivedFieldSources, or is no
/// ModelSelfDescription itself. Takes the time of a ModelSelfDescription.
std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model);

}  // namespace nbscore

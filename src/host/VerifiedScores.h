#pragma once

#include <cstddef>
#include <optional>

#include "framework/ScoreModel.h"
#include "host/CategoryProbabilities.h"
#include "host/VerifiedCell.h"
#include "host/VerifiedValue.h"

namespace nbscore {

/// Reads what verification fields stand for out of the results of a model.
class VerifiedScores {
public:
    /// @param target borrowed: the model's target variable.
    /// @param subModels how many sub-models there are; nothing for a single classifier.
    VerifiedScores(const ScoreDictVar& target, std::optional<std::size_t> subModels);

    /// @param value no input. @param modelIndex the sub-model that is asked, counted from 0; of a single classifier 0.
    /// Throws UnscorableModelError for a result that is not of the model's kind.
    VerifiedCell Get(const ScoreResult& result, const VerifiedValue& value, std::size_t modelIndex);

    /// True when what the value is expected to be must be a number.
    bool IsNumber(const VerifiedValue& value) const;

private:
    bool numericTarget;
    std::optional<std::size_t> numSubModels;
    CategoryProbabilities probabilities;
};

}  // namespace nbscore

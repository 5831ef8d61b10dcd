#pragma once

#include <cstddef>
#include <optional>

#include "framework/ScoreModel.h"
#include "framework/SubModelScoring.h"
#include "table/ModelResults.h"
#include "verify/VerifiedCell.h"
#include "verify/VerifiedValue.h"

namespace nbscore {

/// Scores test cases and reads what verification fields stand for out of the results.
class VerifiedScores {
public:
    /// @param scoredModel borrowed; scorable, and with a target.
    /// @param subModels how many sub-models there are; nothing for a single classifier.
    VerifiedScores(ScoreModel& scoredModel, std::optional<std::size_t> subModels);

    /// Scores a case; what was scored before is forgotten. Of a set the one sub-model that is asked for, where the
    /// model can do so, else all of them.
    /// @param subModel counted from 0, and one of those that there are; of a single classifier 0.
    /// Throws as ReusedResult does, and UnscorableModelError for a result that is not of the model's kind.
    void Score(const ScoreCaseRecord& record, std::size_t subModel);

    /// @param value no input. To be asked for when a case is scored. Throws UnscorableModelError for a result that is
    /// not of the model's kind.
    VerifiedCell Get(const VerifiedValue& value);

    /// True when what the value is expected to be must be a number.
    bool IsNumber(const VerifiedValue& value) const;

private:
    double ScoreSubModel(const ScoreCaseRecord& record, std::size_t subModel);

    ScoreModel& model;
    /// Null where sub-models cannot be scored one by one.
    SubModelScoring* subModelScoring;
    bool numericTarget;
    std::optional<std::size_t> numSubModels;
    CategoryProbabilities probabilities;
    ReusedResult result;
    /// The last case's; of a set only its score.
    const ScoreResult* scored = nullptr;
    double subModelScore = 0.0;
};

}  // namespace nbscore

#pragma once

#include <cstddef>
#include <optional>

#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "host/CategoryProbabilities.h"
#include "host/ScoredCase.h"

namespace nbscore {

/// Finds in a model's results what writers write.
class ScoredCaseReader {
public:
    /// @param model must be scorable, because a set of sub-models is asked how many there are.
    ScoredCaseReader(ScoreModel& model, bool onlyPrediction);

    /// What the result says, valid as long as the result is unchanged, and until the next call. Throws
    /// UnscorableModelError when it does not say what a result of such a model should: a plug-in may answer with any
    /// kind.
    ScoredCase Read(const ScoreResult& result);

private:
    bool predictionOnly;
    std::optional<std::size_t> numSubModels;
    std::optional<CategoryProbabilities> probabilities;
};

}  // namespace nbscore

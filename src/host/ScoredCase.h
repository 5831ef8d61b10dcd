#pragma once

#include <span>

#include "framework/MCMV.h"
#include "framework/ScoreValue.h"
#include "host/SubModelScores.h"

namespace nbscore {

/// What scoring says of one case, whoever scored it. Everything is borrowed.
struct ScoredCase {
    /// Of a single classifier; null for a set.
    const ScoreValue* prediction = nullptr;
    double confidence = MCMV::gMissingValue;
    /// In the order in which the target declares its categories, system-missing for one that the scorer does not tell;
    /// none where only the prediction is wanted.
    std::span<const double> probabilities;
    /// Of a set, one for each sub-model.
    std::span<const SubModelScore> subModels;
};

}  // namespace nbscore

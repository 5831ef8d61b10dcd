#pragma once

#include "framework/Export.h"

namespace nbscore {

/// By which rule a document is scored.
enum class ScoringRule {
    /// The engine's own: counts are smoothed by the threshold, a pseudo-count.
    Smoothed,
    /// That of the PMML standard: shares of counts, and the threshold in the place of those that are 0.
    Standard
};

/// What the standard's rule does with small densities of continuous inputs.
enum class DensityFloor {
    /// Below the threshold, the threshold stands in: what the standard says.
    Threshold,
    /// Only where the density is 0 as a double, the threshold stands in: how R predicts.
    ExactZeros
};

}  // namespace nbscore

/// A face that a model may have beside ScoreModel: it has inputs with densities, and can be told what to do with small
/// ones. To be asked for by `dynamic_cast<ModelDensities*>(model)`.
class SCOREFRAMEWORK_API ModelDensities {
public:
    virtual ~ModelDensities();

    /// Called before the first case; without it the floor is the threshold.
    virtual void SetDensityFloor(nbscore::DensityFloor floor) = 0;

protected:
    ModelDensities() = default;
    ModelDensities(const ModelDensities&) = default;
    ModelDensities& operator=(const ModelDensities&) = default;
};

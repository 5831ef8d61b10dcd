#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "framework/ScoringRule.h"
#include "naivebayes/Density.h"
#include "naivebayes/DensityFactor.h"
#include "naivebayes/ScaledNumber.h"

namespace nbscore {

/// How a case's probabilities are computed by the standard's rule, once its values are factors: for each target
/// category the prior, multiplied by one factor after the other, then divided by the sum over all categories. Neither
/// many small factors nor large ones run out of a double's range.
///
/// In a header, so that all who score compile the same arithmetic. Keeps its memory from case to case.
class StandardProduct {
public:
    /// Goes on to the next case.
    /// @param priorsOfCategories borrowed until the next case.
    void Begin(std::span<const double> priorsOfCategories) {
        priors = priorsOfCategories;
        joints.clear();
    }

    /// @param factors one for each category.
    void MultiplyBy(std::span<const double> factors) {
        RequireJoints();
        for (std::size_t k = 0; k < joints.size(); ++k)
            joints[k].MultiplyBy({factors[k], 0.0});
    }

    /// @param factors one for each category.
    void MultiplyBy(std::span<const ScaledNumber> factors) {
        RequireJoints();
        for (std::size_t k = 0; k < joints.size(); ++k)
            joints[k].MultiplyBy(factors[k]);
    }

    /// @param densities one for each category. They must speak of x (SpeakOf).
    void MultiplyBy(std::span<const Density> densities, double x, double threshold, DensityFloor floor) {
        RequireJoints();
        for (std::size_t k = 0; k < joints.size(); ++k)
            joints[k].MultiplyBy(FactorAt(densities[k], x, threshold, floor));
    }

    /// @param probabilities one for each category. Without any factor they are the priors as they stand.
    /// @return false where no category is possible. Then nothing is said of the probabilities.
    bool Finish(std::span<double> probabilities) {
        if (joints.empty()) {
            std::ranges::copy(priors, probabilities.begin());
            return std::ranges::any_of(priors, [](double prior) { return prior > 0.0; });
        }
        // Scaled alike, so that the largest does not become 0.
        double highest = -std::numeric_limits<double>::infinity();
        for (ScaledNumber& joint : joints) {
            joint.Normalize();
            if (joint.mantissa > 0.0) highest = std::max(highest, joint.exponent);
        }
        double sum = 0.0;
        for (std::size_t k = 0; k < joints.size(); ++k) {
            probabilities[k] = joints[k].Shifted(-highest);
            sum += probabilities[k];
        }
        if (!(sum > 0.0) || !std::isfinite(sum)) return false;
        for (double& probability : probabilities)
            probability /= sum;
        return true;
    }

private:
    void RequireJoints() {
        if (!joints.empty()) return;
        for (const double prior : priors)
            joints.push_back({prior, 0.0});
    }

    std::span<const double> priors;
    std::vector<ScaledNumber> joints;
};

}  // namespace nbscore

#include "verify/NumericTolerance.h"

#include <algorithm>
#include <cmath>

#include "framework/MCMV.h"

namespace nbscore {

bool NumericTolerance::TakesForZero(double expected) const {
    return std::abs(expected) <= zeroThreshold;
}

bool NumericTolerance::Allows(double expected, double actual) const {
    if (!std::isfinite(actual) || MCMV::IsMissing(actual)) return false;
    if (TakesForZero(expected)) return std::abs(actual) <= zeroThreshold;
    // Of a negative number, or with a precision above 1, either may be the lower one.
    const double below = expected * (1.0 - precision);
    const double above = expected * (1.0 + precision);
    return std::min(below, above) <= actual && actual <= std::max(below, above);
}

}  // namespace nbscore

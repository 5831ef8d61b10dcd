#include "verify/VerifiedCell.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {

bool NumericTolerance::TakesForZero(double expected) const {
    return std::abs(expected) <= zeroThreshold;
}

bool NumericTolerance::Allows(double expected, double actual) const {
    if (!std::isfinite(actual) || MCMV::IsMissing(actual)) return false;
    if (TakesForZero(expected)) return std::abs(actual) <= zeroThreshold;
    // For a negative number, or a precision above 1, either may be the lower one.
    const double below = expected * (1.0 - precision);
    const double above = expected * (1.0 + precision);
    return std::min(below, above) <= actual && actual <= std::max(below, above);
}

VerifiedCell VerifiedCell::OfText(std::string text) {
    return {std::move(text), std::nullopt};
}

VerifiedCell VerifiedCell::Nothing() {
    return {{}, std::nullopt, true};
}

VerifiedCell VerifiedCell::OfNumber(double number) {
    if (MCMV::IsMissing(number)) return Nothing();
    return {FormatNumber(number), number};
}

bool Agree(const VerifiedCell& expected, const VerifiedCell& actual, const std::optional<NumericTolerance>& tolerance) {
    if (expected.isNothing || actual.isNothing) return false;
    if (expected.number.has_value() != actual.number.has_value()) return false;
    if (!expected.number) return expected.text == actual.text;
    return tolerance ? tolerance->Allows(*expected.number, *actual.number) : *expected.number == *actual.number;
}

}  // namespace nbscore

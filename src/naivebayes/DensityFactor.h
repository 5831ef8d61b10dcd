#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>

#include "framework/ScoringRule.h"
#include "naivebayes/Density.h"
#include "naivebayes/ScaledNumber.h"

/// @file
/// The factor that a continuous input's value gives to a target category. In a header, so that all who score compile
/// the same arithmetic.
///
/// `exp` and `log` are those of the C library, which differ in the last bits between platforms; factors agree to 1e-12.
/// All else is plain arithmetic in the order stated.

namespace nbscore {

namespace density_factor {

/// exp(-(x - mean)^2 / (2 variance)) / sqrt(2 pi variance), divided before it is squared: the square could overflow.
inline std::optional<ScaledNumber> GaussianAt(double mean, double variance, double x) {
    if (!(variance > 0.0)) return std::nullopt;
    const double distance = x - mean;
    ScaledNumber density = ScaledExp(-(distance * (distance / variance) / 2.0));
    density.mantissa /= std::sqrt(2.0 * std::numbers::pi) * std::sqrt(variance);
    return density;
}

/// x ln(x / mean) + mean - x. Where x is near the mean the sum's terms cancel out, and a series in
/// v = (x - mean) / (x + mean) stands for it: ln(x / mean) = 2 (v + v^3 / 3 + v^5 / 5 + ...).
inline double PoissonDeviance(double x, double mean) {
    const double v = (x - mean) / (x + mean);
    if (std::abs(v) > 0.5) {
        const double ratio = x / mean;
        const double logarithm = std::isnormal(ratio) ? std::log(ratio) : std::log(x) - std::log(mean);
        return x * logarithm + mean - x;
    }
    double sum = (x - mean) * v;
    double power = 2.0 * x * v;
    for (int odd = 3; odd < 1000; odd += 2) {
        power *= v * v;
        const double longer = sum + power / odd;
        if (longer == sum) break;
        sum = longer;
    }
    return sum;
}

/// mean^x e^(-mean) / x!, for a whole x from 0 on: small ones as it is written, others by Stirling's series, because
/// logarithms of factorials would leave too few digits.
inline std::optional<ScaledNumber> PoissonAt(double mean, double x) {
    if (!(mean >= 0.0)) return std::nullopt;
    if (mean == 0.0) return ScaledNumber{x == 0.0 ? 1.0 : 0.0, 0.0};
    constexpr double highestMultiplied = 22.0;  // its factorial is the last one that a double holds exactly
    if (x <= highestMultiplied) {
        ScaledNumber density = ScaledExp(-mean);
        double factorial = 1.0;
        for (double count = 1.0; count <= x; ++count) {
            density.MultiplyBy({mean, 0.0});
            factorial *= count;
        }
        density.Normalize();
        density.mantissa /= factorial;
        return density;
    }
    const double square = x * x;
    const double stirling =
        (1.0 / 12 - (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - 1.0 / 1188 / square) / square) / square) / square) / x;
    ScaledNumber density = ScaledExp(-stirling - PoissonDeviance(x, mean));
    density.mantissa /= std::sqrt(2.0 * std::numbers::pi) * std::sqrt(x);
    return density;
}

/// 1 / (upper - lower) from the lower end to the upper one, both included; 0 outside.
inline std::optional<ScaledNumber> UniformAt(double lower, double upper, double x) {
    if (!(lower < upper)) return std::nullopt;
    if (!(x >= lower && x <= upper)) return ScaledNumber{0.0, 0.0};
    ScaledNumber width{upper - lower, 0.0};
    if (std::isinf(width.mantissa)) width = {upper / 2.0 - lower / 2.0, 1.0};
    width.Normalize();
    return ScaledNumber{1.0 / width.mantissa, -width.exponent};
}

/// Nothing where the density says nothing: it is of no kind, or its parameters are none.
inline std::optional<ScaledNumber> DensityAt(const Density& density, double x) {
    switch (density.kind) {
        case Density::Gaussian:
        case Density::Any:
            return GaussianAt(density.first, density.second, x);
        case Density::Poisson:
            return PoissonAt(density.first, x);
        case Density::Uniform:
            return UniformAt(density.first, density.second, x);
        case Density::None:
            break;
    }
    return std::nullopt;
}

}  // namespace density_factor

/// Whether an input with these densities says something about a number: where one is a Poisson's, only about whole
/// numbers from 0 on; never about a NaN.
inline bool SpeakOf(std::span<const Density> densities, double x) {
    if (std::isnan(x)) return false;
    const bool isCount = std::isfinite(x) && x >= 0.0 && std::floor(x) == x;
    return isCount ||
           std::ranges::none_of(densities, [](const Density& density) { return density.kind == Density::Poisson; });
}

/// The density of x, with the threshold in the place of one that is too small, or that nothing is known of.
inline ScaledNumber FactorAt(const Density& density, double x, double threshold, DensityFloor floor) {
    const ScaledNumber smallest{threshold, 0.0};
    const ScaledNumber factor = density_factor::DensityAt(density, x).value_or(smallest);
    const double plain = factor.Shifted(0.0);
    const bool isHighEnough = floor == DensityFloor::Threshold ? plain >= threshold : plain > 0.0;
    return isHighEnough ? factor : smallest;
}

}  // namespace nbscore

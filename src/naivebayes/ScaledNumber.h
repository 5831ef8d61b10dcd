#pragma once

#include <cmath>

namespace nbscore {

/// A double whose exponent does not run out: mantissa * 2^exponent. Products are rounded as those of plain doubles are,
/// because scaling by powers of two is exact.
struct ScaledNumber {
    double mantissa = 1.0;
    /// A whole number, held as a double because exponents of tiny densities go beyond any integer type.
    double exponent = 0.0;

    /// Brings the mantissa of a finite number that is not 0 to [0.5, 1).
    void Normalize() {
        if (mantissa == 0.0 || !std::isfinite(mantissa)) return;
        int shift = 0;
        mantissa = std::frexp(mantissa, &shift);
        exponent += shift;
    }

    void MultiplyBy(ScaledNumber factor) {
        if (!IsFarFromLimits(factor.mantissa)) factor.Normalize();
        mantissa *= factor.mantissa;
        exponent += factor.exponent;
        if (!IsFarFromLimits(mantissa)) Normalize();
    }

    /// This number times 2^shift as a plain double, which may be 0 or infinite.
    double Shifted(double shift) const {
        constexpr double beyondLimits = 10'000.0;
        const double steps = std::fmin(std::fmax(exponent + shift, -beyondLimits), beyondLimits);
        return std::ldexp(mantissa, static_cast<int>(steps));
    }

private:
    /// Whether the product with another such number is neither rounded to fewer digits nor infinite.
    static bool IsFarFromLimits(double number) { return number > 0x1p-300 && number < 0x1p300; }
};

/// e^power, for powers that are at most a little above 0.
inline ScaledNumber ScaledExp(double power) {
    constexpr double lowestPlainPower = -700.0;
    if (power >= lowestPlainPower) return {std::exp(power), 0.0};
    constexpr double lowestPower = -1e300;
    if (power < lowestPower) return {0.0, 0.0};
    // The logarithm of 2 in two parts. The first has few digits, so that its multiples are exact.
    constexpr double highPart = 0x1.62e42feep-1;
    constexpr double lowPart = 0x1.a39ef35793c76p-33;
    const double twos = std::nearbyint(power / (highPart + lowPart));
    // Of such a power the digits behind the point are not known, and with them the mantissa.
    constexpr double lowestKnownPower = -0x1p50;
    if (power < lowestKnownPower) return {1.0, twos};
    return {std::exp((power - twos * highPart) - twos * lowPart), twos};
}

}  // namespace nbscore

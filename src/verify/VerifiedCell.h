#pragma once

#include <optional>
#include <string>

namespace nbscore {

/// How far a number may be from the one that a test case expects.
///
/// An expected number within the zero threshold of 0 asks for one within the zero threshold of 0; any other asks for
/// one between expected * (1 - precision) and expected * (1 + precision). The bounds themselves are allowed. NaN,
/// infinities and the system-missing number never agree with anything.
struct NumericTolerance {
    double precision;
    double zeroThreshold;

    /// True when the zero threshold applies to this expected number, and not the precision.
    bool TakesForZero(double expected) const;
    bool Allows(double expected, double actual) const;
};

/// What a test case expects, or what scoring gave: a text, a number, or nothing.
struct VerifiedCell {
    static VerifiedCell OfText(std::string text);
    /// Nothing for the system-missing number.
    static VerifiedCell OfNumber(double number);
    static VerifiedCell Nothing();

    /// Of a number as it was written, or as FormatNumber writes it; empty of nothing.
    std::string text;
    std::optional<double> number;
    bool isNothing = false;
};

/// True when the actual value is what is expected: texts byte by byte, numbers within a tolerance, or, without one, as
/// equal numbers. A number never agrees with anything else, and nothing with nothing at all.
bool Agree(const VerifiedCell& expected, const VerifiedCell& actual, const std::optional<NumericTolerance>& tolerance);

}  // namespace nbscore

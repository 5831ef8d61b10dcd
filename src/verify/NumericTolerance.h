#pragma once

namespace nbscore {

/// How far a number may be from the one that a test case expects.
///
/// An expected number within the zero threshold of 0 asks for one within the zero threshold of 0; any other asks for
/// one between expected * (1 - precision) and expected * (1 + precision). The bounds themselves are allowed. NaN,
/// infinities and the system-missing number never agree with anything.
struct NumericTolerance {
    double precision;
    double zeroThreshold;

    /// True when the zero threshold decides about this expected number, and not the precision.
    bool TakesForZero(double expected) const;
    bool Allows(double expected, double actual) const;
};

}  // namespace nbscore

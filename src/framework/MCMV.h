#pragma once

#include <limits>

/// The missing value of a number.
///
/// A number that is missing is held as the most negative finite double (bit pattern 0xFFEFFFFFFFFFFFFF), never
/// as a NaN: it survives every copy unchanged and is recognised by plain equality.
struct MCMV {
    static constexpr double gMissingValue = -std::numeric_limits<double>::max();

    static constexpr double Missing() { return gMissingValue; }

    /// True only for exactly the missing value; a NaN or an infinity is not missing.
    static constexpr bool IsMissing(double value) { return value == gMissingValue; }
};

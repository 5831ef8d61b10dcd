#pragma once

#include <optional>
#include <string>

#include "verify/NumericTolerance.h"

namespace nbscore {

/// What a test case expects, or what scoring gave: a text, a number, or nothing.
struct VerifiedCell {
    static VerifiedCell OfText(std::string text);
    /// Nothing, with an empty text, for the system-missing number.
    static VerifiedCell OfNumber(double number);

    /// Of a number as it was written, or as FormatNumber writes it.
    std::string text;
    std::optional<double> number;
};

/// True when the actual value is what is expected: texts byte by byte, numbers within a tolerance, or, without one, as
/// equal numbers. A number and what is none never agree.
bool Agree(const VerifiedCell& expected, const VerifiedCell& actual, const std::optional<NumericTolerance>& tolerance);

}  // namespace nbscore

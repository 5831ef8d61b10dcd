#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "framework/Export.h"

namespace nbscore {

/// The number that the whole text holds, or nothing.
///
/// Blanks (space, tab, CR, LF) may stand around it. The number has an optional sign, digits on at least one side
/// of an optional point, and an optional exponent. Hexadecimal, "inf", "nan" and what a double cannot hold are no
/// numbers. Never depends on the locale.
SCOREFRAMEWORK_API std::optional<double> ReadNumber(std::string_view text);

/// The same, but a number that is too small for a double is 0.
SCOREFRAMEWORK_API std::optional<double> ReadRoundedNumber(std::string_view text);

/// The whole number (optional sign, digits, 32 bits) that the whole text holds, or nothing. Blanks as above.
SCOREFRAMEWORK_API std::optional<int> ReadInt(std::string_view text);

/// The shortest digits that read back as the same double: plain notation from 1e-4 up to below 1e16, else
/// scientific with at least two exponent digits ("0", "0.5", "100000", "1e+22", "1e-07"). "nan", "inf", "-inf".
SCOREFRAMEWORK_API std::string FormatNumber(double number);

/// The same with at most 15 significant digits, for counts that people read: sums of parts of cases differ from the
/// number that is meant in the last of a double's digits.
SCOREFRAMEWORK_API std::string FormatCount(double count);

/// As FormatNumber, appended to a text that the caller keeps.
SCOREFRAMEWORK_API void AppendNumber(std::string& text, double number);

/// The longest texts are "-1.7976931348623157e+308" and "-0.00012345678901234567".
inline constexpr std::size_t mostNumberBytes = 24;
/// The same, written to memory; tells where the text ends.
/// @param to room for mostNumberBytes, of which more may be written over than the text takes.
SCOREFRAMEWORK_API char* WriteNumber(char* to, double number);

/// Truncated toward zero and held at the limits of 32 bits; 0 for a NaN. A plain conversion is undefined there.
inline int SaturateToInt(double number) {
    if (std::isnan(number)) return 0;
    if (number >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (number <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return static_cast<int>(number);
}

}  // namespace nbscore

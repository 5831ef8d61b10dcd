#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace nbscore {

/// The digits of a number, without sign, by one of printf's conversions: d i u o x X f F e E g G s.
/// @param magnitude finite and not negative.
/// @param precision of d i u o x X the fewest digits, of f F e E the decimals, of g G the significant digits; s has
///     none.
/// @return nothing for a number that is too great for o x X.
std::optional<std::string> DigitsOf(double magnitude, char conversion, std::optional<std::size_t> precision);

}  // namespace nbscore

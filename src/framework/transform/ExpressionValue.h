#pragma once

#include <cmath>
#include <string>
#include <variant>

namespace nbscore {

/// What an expression gives for one case: nothing (missing), a number, a truth value, or a text.
using ExpressionValue = std::variant<std::monostate, double, bool, std::string>;

inline bool IsMissing(const ExpressionValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Whether it is a value that can be one of a field: not missing, and no NaN. An infinity is one.
inline bool IsValidByItself(const ExpressionValue& value) {
    const auto* number = std::get_if<double>(&value);
    return !IsMissing(value) && (number == nullptr || !std::isnan(*number));
}

}  // namespace nbscore

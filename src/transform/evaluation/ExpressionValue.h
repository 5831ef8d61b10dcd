#pragma once

#include <cmath>
#include <string>
#include <variant>

namespace nbscore {

/// What an expression gives for one case: nothing (missing), a number, a truth value, or a text.
using ExpressionValue = std::variant<std::monostate, double, bool, std::string>;

/// A copy that is made of the parts. A copy of the variant itself is not safe when memory runs out in the midst of it:
/// the standard library of GCC 12 then destroys what it has not built.
inline ExpressionValue CopyOf(const ExpressionValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return std::string(*text);
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    return {};
}

inline bool IsMissing(const ExpressionValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Whether it is a value that can be one of a field: not missing, and no NaN. An infinity is one.
inline bool IsValidByItself(const ExpressionValue& value) {
    const auto* number = std::get_if<double>(&value);
    return !IsMissing(value) && (number == nullptr || !std::isnan(*number));
}

}  // namespace nbscore

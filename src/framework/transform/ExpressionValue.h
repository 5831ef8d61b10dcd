#pragma once

#include <string>
#include <variant>

namespace nbscore {

/// What an expression gives for one case: nothing (missing), a number, a truth value, or a text.
using ExpressionValue = std::variant<std::monostate, double, bool, std::string>;

inline bool IsMissing(const ExpressionValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

}  // namespace nbscore

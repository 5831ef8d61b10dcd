#pragma once

#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "framework/NumberText.h"
#include "transform/functions/BuiltInFunctions.h"

namespace nbscore::test {

inline const ExpressionValue missing;

inline const BuiltInFunction& Function(std::string_view name) {
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (function.name == name) return function;
    }
    throw std::invalid_argument("no function " + std::string(name));
}

/// A value as text that tells its kind: missing, 1.5, true, 'abc'.
inline std::string Shown(const ExpressionValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return FormatNumber(*number);
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "true" : "false";
    if (const auto* text = std::get_if<std::string>(&value)) return "'" + *text + "'";
    return "missing";
}

/// What the function gives for these values, missing ones only for functions that see them; in a case that has all its
/// budget left.
inline std::string Call(std::string_view name, const std::vector<ExpressionValue>& arguments) {
    const BuiltInFunction& function = Function(name);
    if (function.call != nullptr) return Shown(function.call(arguments));
    WorkBudget budget(WorkBudget::ofCase);
    return Shown(function.callWithin(arguments, budget));
}

inline double NumberFrom(std::string_view name, const std::vector<ExpressionValue>& arguments) {
    return std::get<double>(Function(name).call(arguments));
}

}  // namespace nbscore::test

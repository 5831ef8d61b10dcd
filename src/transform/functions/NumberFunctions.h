#pragma once

#include <string_view>

#include "transform/functions/BuiltInFunctions.h"

namespace nbscore {

/// Calls of functions from numbers to a number. With an argument that is no number the result is missing.

template <double (&operation)(double)>
ExpressionValue OfOneNumber(Arguments arguments) {
    const auto x = NumberOf(arguments[0]);
    return x ? ExpressionValue(operation(*x)) : ExpressionValue();
}

template <double (&operation)(double, double)>
ExpressionValue OfTwoNumbers(Arguments arguments) {
    const auto x = NumberOf(arguments[0]);
    const auto y = NumberOf(arguments[1]);
    return x && y ? ExpressionValue(operation(*x, *y)) : ExpressionValue();
}

template <double (&operation)(double, double, double)>
ExpressionValue OfThreeNumbers(Arguments arguments) {
    const auto x = NumberOf(arguments[0]);
    const auto y = NumberOf(arguments[1]);
    const auto z = NumberOf(arguments[2]);
    return x && y && z ? ExpressionValue(operation(*x, *y, *z)) : ExpressionValue();
}

/// Rows of the table for such functions. A missing argument gives missing.

template <double (&operation)(double)>
constexpr BuiltInFunction OneNumberRow(std::string_view name, std::string_view description) {
    return {name, "x", 1, 1, MissingRule::GivesMissing, ValueKind::Number, description, OfOneNumber<operation>};
}

template <double (&operation)(double, double)>
constexpr BuiltInFunction TwoNumbersRow(std::string_view name, std::string_view parameters,
                                        std::string_view description) {
    return {name, parameters, 2, 2, MissingRule::GivesMissing, ValueKind::Number, description, OfTwoNumbers<operation>};
}

template <double (&operation)(double, double, double)>
constexpr BuiltInFunction ThreeNumbersRow(std::string_view name, std::string_view parameters,
                                          std::string_view description) {
    return {
        name, parameters, 3, 3, MissingRule::GivesMissing, ValueKind::Number, description, OfThreeNumbers<operation>};
}

}  // namespace nbscore

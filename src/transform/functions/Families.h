#pragma once

#include <span>

#include "transform/functions/BuiltInFunctions.h"

/// @file
/// The families of built-in functions. BuiltInFunctions.cpp makes one table of them.

namespace nbscore {

// Mathematics.cpp
std::span<const BuiltInFunction> ArithmeticFunctions();
std::span<const BuiltInFunction> GeneralMathFunctions();
std::span<const BuiltInFunction> TrigonometricFunctions();
// Aggregates.cpp
std::span<const BuiltInFunction> AggregateFunctions();
// Distributions.cpp
std::span<const BuiltInFunction> DistributionFunctions();
// Conditions.cpp
std::span<const BuiltInFunction> ComparisonFunctions();
std::span<const BuiltInFunction> MembershipFunctions();
std::span<const BuiltInFunction> LogicFunctions();
std::span<const BuiltInFunction> MissingValueFunctions();
std::span<const BuiltInFunction> ConditionalFunctions();
// TextFunctions.cpp
std::span<const BuiltInFunction> StringFunctions();
std::span<const BuiltInFunction> RegularExpressionFunctions();
// Formatting.cpp
std::span<const BuiltInFunction> FormattingFunctions();
// Dates.cpp
std::span<const BuiltInFunction> DateFunctions();

}  // namespace nbscore

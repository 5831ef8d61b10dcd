#pragma once

#include <optional>
#include <string>
#include <variant>

/// @file
/// The values that the brute-force evaluator of derived fields computes with, and how one kind is read as another.
/// Shares no code with what it checks.

namespace nbscore::test {

/// Missing, a number, a truth value or a text.
using BruteForceValue = std::variant<std::monostate, double, bool, std::string>;

/// What a field, a function or one of its parameters is declared to hold.
enum class BruteForceKind { Any, Number, Truth, Text };

bool IsMissing(const BruteForceValue& value);

/// The number that a text holds, with blanks around it allowed; nothing when it holds none.
std::optional<double> AsNumber(const BruteForceValue& value);
std::optional<bool> AsTruth(const BruteForceValue& value);
/// The shortest digits that read back as the same number; empty for a missing value.
std::string AsText(const BruteForceValue& value);

/// Missing when there is no such value.
BruteForceValue Converted(const BruteForceValue& value, BruteForceKind kind);

enum class BruteForceOrder { Below, Equal, Above, Unordered };

/// How one value that is not missing compares with another. A NaN is unordered.
BruteForceOrder Compare(const BruteForceValue& one, const BruteForceValue& other);

}  // namespace nbscore::test

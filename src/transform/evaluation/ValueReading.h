#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>

#include "transform/evaluation/ExpressionValue.h"

/// @file
/// How values of one kind are read as another, and how any two compare: one rule for every expression and function.

namespace nbscore {

/// No text longer than this, in bytes, is ever made: texts made of texts could else outgrow any memory.
inline constexpr std::size_t longestText = 1'000'000;

/// The text, or missing when it is longer than the longest.
ExpressionValue BoundedText(std::string text);

/// A number as it stands, a truth value as 1 or 0, a text as the number that the whole of it holds; otherwise nothing.
std::optional<double> NumberOf(const ExpressionValue& value);

/// A truth value as it stands; the numbers 1 and 0 and the texts "true", "false", "1" and "0" as one; otherwise
/// nothing.
std::optional<bool> TruthOf(const ExpressionValue& value);

/// A text as it stands, a number in its shortest form, a truth value as "true" or "false"; missing as the empty text.
std::string TextOf(const ExpressionValue& value);

/// How two values that are not missing compare. Two of one kind compare as what they are, texts byte by byte. A truth
/// value compares with what reads as one. Of two kinds otherwise, they compare as numbers when both can be read as
/// numbers, else as texts. NaN is unordered with everything.
std::partial_ordering CompareValues(const ExpressionValue& left, const ExpressionValue& right);

inline bool AreEqual(const ExpressionValue& left, const ExpressionValue& right) {
    return CompareValues(left, right) == std::partial_ordering::equivalent;
}

}  // namespace nbscore

#pragma once

#include <cmath>
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "framework/Export.h"

/// @file
/// The values of expressions: how one kind is read as another, and how any two compare. One rule for every expression
/// and function.

namespace nbscore {

/// What an expression gives for one case: nothing (missing), a number, a truth value, or a text.
using ExpressionValue = std::variant<std::monostate, double, bool, std::string>;

/// A copy made member by member. To copy the variant itself is not safe when memory runs out on the way: the standard
/// library of GCC 12 then destroys what it has not built.
inline ExpressionValue CopyOf(const ExpressionValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return std::string(*text);
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    return {};
}

inline bool IsMissing(const ExpressionValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Whether a field may have this value at all: not missing and no NaN. An infinity is valid.
inline bool IsValidByItself(const ExpressionValue& value) {
    const auto* number = std::get_if<double>(&value);
    return !IsMissing(value) && (number == nullptr || !std::isnan(*number));
}

/// No longer text, in bytes, is ever made: texts made of texts could otherwise outgrow any memory.
inline constexpr std::size_t longestText = 1'000'000;

/// The text, or missing when it is too long.
ExpressionValue BoundedText(std::string text);

/// A number as it is, a truth value as 1 or 0, a text as the number that the whole of it holds; otherwise nothing.
std::optional<double> NumberOf(const ExpressionValue& value);

/// A truth value as it is; the numbers 1 and 0 and the texts "true", "false", "1" and "0" as truth values; otherwise
/// nothing.
std::optional<bool> TruthOf(const ExpressionValue& value);

/// A text as it is, a number in its shortest form, a truth value as "true" or "false", missing as the empty text.
std::string TextOf(const ExpressionValue& value);

/// How two values that are not missing compare. Two of one kind compare as that kind, texts byte by byte. A truth value
/// compares as truth values do with anything that reads as one. Any others compare as numbers when both read as
/// numbers, and as texts when not. NaN is unordered with everything.
std::partial_ordering CompareValues(const ExpressionValue& left, const ExpressionValue& right);

inline bool AreEqual(const ExpressionValue& left, const ExpressionValue& right) {
    return CompareValues(left, right) == std::partial_ordering::equivalent;
}

/// The kind of value that a `dataType` asks for. Any leaves values as they are.
enum class ValueKind : unsigned char { Any, Number, Truth, Text };

/// The value converted to this kind; missing when it cannot be.
ExpressionValue CastTo(ValueKind kind, ExpressionValue value);

/// A text of a document or a case, as a value of this kind where the whole text reads as one, otherwise unchanged. For
/// any kind it is a number where it reads as one, as a constant without a type is.
ExpressionValue ReadAs(ValueKind kind, std::string text);

/// A text of a field of truth values by the standard's rule, where producers spell them in many ways: "true" or "false"
/// for one of these words in letters of any case, and for a number that is 1 or 0; any other text as it stands.
SCOREFRAMEWORK_API std::string_view AsTruthText(std::string_view text);

}  // namespace nbscore

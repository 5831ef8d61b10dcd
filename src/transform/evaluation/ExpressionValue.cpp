#include "transform/evaluation/ExpressionValue.h"

#include <algorithm>
#include <utility>

#include "framework/Blanks.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

std::optional<bool> TruthOfText(const std::string& text) {
    if (text == "true" || text == "1") return true;
    if (text == "false" || text == "0") return false;
    return std::nullopt;
}

std::optional<bool> TruthOfNumber(double number) {
    if (number == 1.0) return true;
    if (number == 0.0) return false;
    return std::nullopt;
}

/// @param word in small letters.
bool IsWord(std::string_view text, std::string_view word) {
    return std::ranges::equal(text, word, [](char letter, char small) {
        return letter == small || (letter >= 'A' && letter <= 'Z' && letter - 'A' + 'a' == small);
    });
}

std::partial_ordering CompareTexts(const std::string& left, const std::string& right) {
    return left.compare(right) <=> 0;
}

bool IsTruth(const ExpressionValue& value) {
    return std::holds_alternative<bool>(value);
}

template <typename Held>
ExpressionValue ValueOrMissing(const std::optional<Held>& held) {
    return held ? ExpressionValue(*held) : ExpressionValue();
}

}  // namespace

ExpressionValue BoundedText(std::string text) {
    return text.size() > longestText ? ExpressionValue() : ExpressionValue(std::move(text));
}

std::optional<double> NumberOf(const ExpressionValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
    if (const auto* text = std::get_if<std::string>(&value)) return ReadNumber(*text);
    return std::nullopt;
}

std::optional<bool> TruthOf(const ExpressionValue& value) {
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    if (const auto* number = std::get_if<double>(&value)) return TruthOfNumber(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return TruthOfText(*text);
    return std::nullopt;
}

std::string TextOf(const ExpressionValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<double>(&value)) return FormatNumber(*number);
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "true" : "false";
    return std::string();
}

std::partial_ordering CompareValues(const ExpressionValue& left, const ExpressionValue& right) {
    const auto* leftText = std::get_if<std::string>(&left);
    const auto* rightText = std::get_if<std::string>(&right);
    if (leftText != nullptr && rightText != nullptr) return CompareTexts(*leftText, *rightText);
    if (IsTruth(left) || IsTruth(right)) {
        const std::optional<bool> leftTruth = TruthOf(left);
        const std::optional<bool> rightTruth = TruthOf(right);
        if (leftTruth && rightTruth) return static_cast<int>(*leftTruth) <=> static_cast<int>(*rightTruth);
    } else {
        const std::optional<double> leftNumber = NumberOf(left);
        const std::optional<double> rightNumber = NumberOf(right);
        if (leftNumber && rightNumber) return *leftNumber <=> *rightNumber;
    }
    return CompareTexts(TextOf(left), TextOf(right));
}

ExpressionValue CastTo(ValueKind kind, ExpressionValue value) {
    if (IsMissing(value)) return value;
    switch (kind) {
        case ValueKind::Number:
            return ValueOrMissing(NumberOf(value));
        case ValueKind::Truth:
            return ValueOrMissing(TruthOf(value));
        case ValueKind::Text:
            if (!std::holds_alternative<std::string>(value)) return TextOf(value);
            break;
        case ValueKind::Any:
            break;
    }
    return value;
}

ExpressionValue ReadAs(ValueKind kind, std::string text) {
    ExpressionValue value(std::move(text));
    if (kind == ValueKind::Text) return value;
    ExpressionValue read = CastTo(kind == ValueKind::Truth ? kind : ValueKind::Number, CopyOf(value));
    if (IsMissing(read)) return value;
    return read;
}

std::string_view AsTruthText(std::string_view text) {
    static constexpr std::string_view yes = "true";
    static constexpr std::string_view no = "false";
    const std::string_view word = WithoutBlanks(text);
    if (IsWord(word, yes)) return yes;
    if (IsWord(word, no)) return no;
    const std::optional<double> number = ReadNumber(word);
    const std::optional<bool> truth = number ? TruthOfNumber(*number) : std::nullopt;
    if (!truth) return text;
    return *truth ? yes : no;
}

}  // namespace nbscore

#include "support/BruteForceValue.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace nbscore::test {
namespace {

const std::string blanks = " \t\r\n";

std::size_t SkipDigits(const std::string& text, std::size_t at) {
    while (at < text.size() && text[at] >= '0' && text[at] <= '9')
        ++at;
    return at;
}

std::size_t SkipSign(const std::string& text, std::size_t at) {
    return at < text.size() && (text[at] == '-' || text[at] == '+') ? at + 1 : at;
}

/// Whether the text is digits with at most a sign, a point and an exponent.
bool IsDecimal(const std::string& text) {
    const std::size_t start = SkipSign(text, 0);
    std::size_t at = SkipDigits(text, start);
    std::size_t digits = at - start;
    if (at < text.size() && text[at] == '.') {
        const std::size_t end = SkipDigits(text, at + 1);
        digits += end - at - 1;
        at = end;
    }
    if (digits == 0) return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t exponent = SkipSign(text, at + 1);
        at = SkipDigits(text, exponent);
        if (at == exponent) return false;
    }
    return at == text.size();
}

std::optional<double> NumberIn(const std::string& text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return std::nullopt;
    const std::string trimmed = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    if (!IsDecimal(trimmed)) return std::nullopt;
    const double number = std::strtod(trimmed.c_str(), nullptr);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// Digits and exponent as `d.ddde+xx`, with as few digits as read back as the number.
std::string ShortestScientific(double number) {
    std::array<char, 40> buffer{};
    for (int precision = 0; precision <= 17; ++precision) {
        std::snprintf(buffer.data(), buffer.size(), "%.*e", precision, number);
        if (std::strtod(buffer.data(), nullptr) == number) break;
    }
    return buffer.data();
}

std::string TextOfNumber(double number) {
    if (std::isnan(number)) return "nan";
    if (std::isinf(number)) return number < 0.0 ? "-inf" : "inf";
    const std::string scientific = ShortestScientific(number);
    const double size = std::fabs(number);
    if (size != 0.0 && (size < 1e-4 || size >= 1e16)) return scientific;
    const std::size_t e = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + e + 1);
    const int digits = static_cast<int>(scientific.find('.') == std::string::npos ? 0 : e - scientific.find('.') - 1);
    std::array<char, 400> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", digits > exponent ? digits - exponent : 0, number);
    return buffer.data();
}

template <typename T>
BruteForceOrder OrderOf(const T& one, const T& other) {
    if (one == other) return BruteForceOrder::Equal;
    if (one < other) return BruteForceOrder::Below;
    return other < one ? BruteForceOrder::Above : BruteForceOrder::Unordered;
}

template <typename T>
BruteForceOrder OrderOfBoth(const std::optional<T>& one, const std::optional<T>& other, const BruteForceValue& first,
                            const BruteForceValue& second) {
    return one && other ? OrderOf(*one, *other) : OrderOf(AsText(first), AsText(second));
}

}  // namespace

bool IsMissing(const BruteForceValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

std::optional<double> AsNumber(const BruteForceValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? NumberIn(*text) : std::nullopt;
}

std::optional<bool> AsTruth(const BruteForceValue& value) {
    if (const auto* truth = std::get_if<bool>(&value)) return *truth;
    if (const auto* number = std::get_if<double>(&value)) {
        return *number == 1.0 || *number == 0.0 ? std::optional(*number == 1.0) : std::nullopt;
    }
    const std::string text = AsText(value);
    if (text == "true" || text == "1") return true;
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}

std::string AsText(const BruteForceValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return TextOfNumber(*number);
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "true" : "false";
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

BruteForceValue Converted(const BruteForceValue& value, BruteForceKind kind) {
    if (IsMissing(value) || kind == BruteForceKind::Any) return value;
    if (kind == BruteForceKind::Text) return AsText(value);
    if (kind == BruteForceKind::Truth) {
        const auto truth = AsTruth(value);
        return truth ? BruteForceValue(*truth) : BruteForceValue();
    }
    const auto number = AsNumber(value);
    return number ? BruteForceValue(*number) : BruteForceValue();
}

BruteForceOrder Compare(const BruteForceValue& one, const BruteForceValue& other) {
    if (std::holds_alternative<bool>(one) || std::holds_alternative<bool>(other)) {
        return OrderOfBoth(AsTruth(one), AsTruth(other), one, other);
    }
    if (std::holds_alternative<double>(one) || std::holds_alternative<double>(other)) {
        return OrderOfBoth(AsNumber(one), AsNumber(other), one, other);
    }
    return OrderOf(AsText(one), AsText(other));
}

}  // namespace nbscore::test

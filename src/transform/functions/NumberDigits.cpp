#include "transform/functions/NumberDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "framework/NumberText.h"

namespace nbscore {
namespace {

constexpr std::size_t usualDecimals = 6;

/// By the standard conversion with a precision, which no locale touches.
std::string Converted(double magnitude, std::chars_format format, std::size_t precision) {
    // The longest has all digits before the point, the point, and the decimals; an exponent is shorter than the former.
    std::string digits(std::numeric_limits<double>::max_exponent10 + precision + 8, '\0');
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), magnitude, format, static_cast<int>(precision));
    digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
    return digits;
}

std::optional<std::string> InBase(double whole, int base) {
    constexpr double limit = 18446744073709551616.0;  // 2^64
    if (whole >= limit) return std::nullopt;
    std::string digits(std::numeric_limits<std::uint64_t>::digits, '\0');
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::uint64_t>(whole), base);
    digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
    return digits;
}

std::optional<std::string> WithLeadingZeros(std::optional<std::string> digits, std::size_t fewest) {
    if (digits && digits->size() < fewest) digits->insert(0, fewest - digits->size(), '0');
    return digits;
}

std::optional<std::string> InCapitals(std::optional<std::string> digits) {
    if (digits) {
        std::ranges::transform(*digits, digits->begin(), [](char digit) {
            return digit >= 'a' && digit <= 'z' ? static_cast<char>(digit - 'a' + 'A') : digit;
        });
    }
    return digits;
}

}  // namespace

std::optional<std::string> DigitsOf(double magnitude, char conversion, std::optional<std::size_t> precision) {
    const std::size_t decimals = precision.value_or(usualDecimals);
    const std::size_t fewest = precision.value_or(1);
    // The rounding mode is never changed, so this is to the nearest, halves to the even one.
    const double whole = std::nearbyint(magnitude);
    switch (conversion) {
        case 's':
            return FormatNumber(magnitude);
        case 'f':
        case 'F':
            return Converted(magnitude, std::chars_format::fixed, decimals);
        case 'e':
            return Converted(magnitude, std::chars_format::scientific, decimals);
        case 'g':
            return Converted(magnitude, std::chars_format::general, decimals);
        case 'E':
            return InCapitals(DigitsOf(magnitude, 'e', precision));
        case 'G':
            return InCapitals(DigitsOf(magnitude, 'g', precision));
        case 'o':
            return WithLeadingZeros(InBase(whole, 8), fewest);
        case 'x':
            return WithLeadingZeros(InBase(whole, 16), fewest);
        case 'X':
            return InCapitals(DigitsOf(magnitude, 'x', precision));
        default:
            return WithLeadingZeros(Converted(whole, std::chars_format::fixed, 0), fewest);
    }
}

}  // namespace nbscore

#include "transform/functions/NumberPattern.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "framework/NumberText.h"

namespace nbscore {
namespace {

constexpr std::size_t widest = 1000;
constexpr std::string_view flagCharacters = "-+ 0";
constexpr std::string_view lengthCharacters = "hlLqjzt";
constexpr std::string_view conversions = "diuoxXfFeEgGs";
constexpr std::string_view wholeConversions = "diuoxX";
constexpr std::string_view unsignedConversions = "uoxX";
constexpr std::size_t usualDecimals = 6;

/// By std::to_chars, which does not depend on the locale.
std::string Converted(double magnitude, std::chars_format format, std::size_t precision) {
    // The longest result has all digits before the point, the point, and the decimals; an exponent takes less room.
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

/// The digits of a number, without sign, by one of printf's conversions: d i u o x X f F e E g G s.
/// @param magnitude finite and not negative.
/// @param precision for d i u o x X the fewest digits, for f F e E the decimals, for g G the significant digits; s has
///     none.
/// @return nothing for a number that is too great for o x X.
std::optional<std::string> DigitsOf(double magnitude, char conversion, std::optional<std::size_t> precision) {
    const std::size_t decimals = precision.value_or(usualDecimals);
    const std::size_t fewest = precision.value_or(1);
    // The rounding mode is never changed: to the nearest, a half to the even one.
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

bool Contains(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

std::string_view TakeAll(std::string_view characters, std::string_view& rest) {
    const std::string_view taken = rest.substr(0, std::min(rest.find_first_not_of(characters), rest.size()));
    rest.remove_prefix(taken.size());
    return taken;
}

/// Takes off leading digits. A number above the widest is held at one above it, however many digits there are.
std::size_t TakeSize(std::string_view& rest) {
    std::size_t size = 0;
    for (const char digit : TakeAll("0123456789", rest))
        size = std::min(size * 10 + static_cast<std::size_t>(digit - '0'), widest + 1);
    return size;
}

/// Moves the text before the next conversion to the end of `text`, %% as one percent sign. False when there is none.
bool TakeText(std::string_view& rest, std::string& text) {
    while (!rest.empty()) {
        const bool isPercentSign = rest.starts_with("%%");
        if (rest.front() == '%' && !isPercentSign) return true;
        text += rest.front();
        rest.remove_prefix(isPercentSign ? 2 : 1);
    }
    return false;
}

}  // namespace

std::optional<NumberPattern> NumberPattern::Read(std::string_view pattern, std::string& fault) {
    NumberPattern read;
    std::string_view rest = pattern;
    if (!TakeText(rest, read.textBefore)) {
        fault = "it has no conversion for the number";
        return std::nullopt;
    }
    rest.remove_prefix(1);
    fault = ReadConversion(rest, read.conversion);
    if (fault.empty() && TakeText(rest, read.textBehind)) fault = "it has more than one conversion";
    return fault.empty() ? std::optional(std::move(read)) : std::nullopt;
}

/// Takes off a conversion, without its percent sign. Returns what is wrong with it; empty when nothing is.
std::string NumberPattern::ReadConversion(std::string_view& rest, Conversion& conversion) {
    const std::string_view flags = TakeAll(flagCharacters, rest);
    conversion.alignsLeft = Contains(flags, '-');
    conversion.padsWithZeros = Contains(flags, '0');
    conversion.positiveSign = Contains(flags, '+') ? "+" : Contains(flags, ' ') ? " " : "";
    conversion.width = TakeSize(rest);
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        conversion.precision = TakeSize(rest);
    }
    if (conversion.width > widest || conversion.precision > widest) return "a width or precision is above 1000";
    TakeAll(lengthCharacters, rest);
    if (rest.empty()) return "its conversion is not complete";
    if (!Contains(conversions, rest.front())) return "its conversion is none of " + std::string(conversions);
    conversion.kind = rest.front();
    rest.remove_prefix(1);
    if (conversion.kind == 's' && conversion.precision) return "the conversion s has no precision";
    return {};
}

std::optional<std::string> NumberPattern::Format(double number) const {
    if (!std::isfinite(number)) return std::nullopt;
    const bool isWhole = Contains(wholeConversions, conversion.kind);
    const bool isUnsigned = Contains(unsignedConversions, conversion.kind);
    const bool isNegative = isWhole ? std::nearbyint(number) < 0.0 : std::signbit(number);
    if (isUnsigned && isNegative) return std::nullopt;
    auto digits = DigitsOf(std::abs(number), conversion.kind, conversion.precision);
    if (!digits) return std::nullopt;
    const std::string sign = isNegative ? "-" : isUnsigned ? "" : conversion.positiveSign;
    return textBefore + Padded(sign, *digits) + textBehind;
}

std::string NumberPattern::Padded(const std::string& sign, const std::string& digits) const {
    const std::size_t size = sign.size() + digits.size();
    const std::size_t padding = conversion.width > size ? conversion.width - size : 0;
    if (conversion.alignsLeft) return sign + digits + std::string(padding, ' ');
    // As in C, a whole number with a precision, its fewest digits, is not padded with zeros.
    const bool hasFewestDigits = conversion.precision && Contains(wholeConversions, conversion.kind);
    if (conversion.padsWithZeros && !hasFewestDigits) return sign + std::string(padding, '0') + digits;
    return std::string(padding, ' ') + sign + digits;
}

}  // namespace nbscore

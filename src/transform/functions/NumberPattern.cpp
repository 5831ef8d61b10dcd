#include "transform/functions/NumberPattern.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "transform/functions/NumberDigits.h"

namespace nbscore {
namespace {

constexpr std::size_t widest = 1000;
constexpr std::string_view flagCharacters = "-+ 0";
constexpr std::string_view lengthCharacters = "hlLqjzt";
constexpr std::string_view conversions = "diuoxXfFeEgGs";
constexpr std::string_view wholeConversions = "diuoxX";
constexpr std::string_view unsignedConversions = "uoxX";

bool Contains(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

std::string_view TakeAll(std::string_view characters, std::string_view& rest) {
    const std::string_view taken = rest.substr(0, std::min(rest.find_first_not_of(characters), rest.size()));
    rest.remove_prefix(taken.size());
    return taken;
}

/// Takes leading digits off; more than the widest stays more than the widest however many there are.
std::size_t TakeSize(std::string_view& rest) {
    std::size_t size = 0;
    for (const char digit : TakeAll("0123456789", rest))
        size = std::min(size * 10 + static_cast<std::size_t>(digit - '0'), widest + 1);
    return size;
}

/// Moves text up to the next conversion over, with %% as one percent sign. False at the end of the pattern.
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

/// Takes a conversion off, behind its percent sign. Answers what is wrong with it; empty when nothing is.
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
    // As in C, a whole number's precision, its fewest digits, takes the place of padding with zeros.
    const bool hasFewestDigits = conversion.precision && Contains(wholeConversions, conversion.kind);
    if (conversion.padsWithZeros && !hasFewestDigits) return sign + std::string(padding, '0') + digits;
    return std::string(padding, ' ') + sign + digits;
}

}  // namespace nbscore

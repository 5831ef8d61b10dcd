#include "framework/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

#include "framework/Blanks.h"

namespace nbscore {
namespace {

/// Takes one of the characters off the front, if it stands there.
bool TakeOneOf(std::string_view characters, std::string_view& text) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

/// Takes all leading digits off and tells whether there was one.
bool TakeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && text[count] >= '0' && text[count] <= '9')
        ++count;
    text.remove_prefix(count);
    return count > 0;
}

bool IsWholeNumber(std::string_view text) {
    TakeOneOf("+-", text);
    return TakeDigits(text) && text.empty();
}

bool IsDecimalNumber(std::string_view text) {
    TakeOneOf("+-", text);
    bool hasDigits = TakeDigits(text);
    if (TakeOneOf(".", text)) hasDigits |= TakeDigits(text);
    if (!hasDigits) return false;
    if (TakeOneOf("eE", text)) {
        TakeOneOf("+-", text);
        if (!TakeDigits(text)) return false;
    }
    return text.empty();
}

/// Whether a number in decimal form, its sign aside, is less than 1, however long its digits and its exponent are.
bool IsBelowOne(std::string_view text) {
    const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
    const std::string_view digits = text.substr(0, mark);
    const auto first = static_cast<std::ptrdiff_t>(digits.find_first_of("123456789"));
    const auto point = static_cast<std::ptrdiff_t>(std::min(digits.find('.'), digits.size()));
    if (first < 0) return true;
    std::string_view exponent = text.substr(std::min(mark + 1, text.size()));
    TakeOneOf("+", exponent);
    std::int64_t shift = 0;
    const auto [end, error] = std::from_chars(exponent.data(), exponent.data() + exponent.size(), shift);
    if (error == std::errc::result_out_of_range) return exponent.front() == '-';
    return point - first + shift <= 0;
}

/// The value of a text of nothing but a sign, a few digits and a point; nothing for any other. Whole numbers below 2^53
/// and powers of ten up to 10^22 are doubles as they are, so that the one division rounds as the whole conversion
/// would.
std::optional<double> ConvertShortDecimal(std::string_view text) {
    static constexpr std::array<double, 16> powersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr std::size_t mostDigits = 15;
    const char* next = text.data();
    const char* const end = next + text.size();
    const bool isNegative = next != end && *next == '-';
    if (next != end && (*next == '-' || *next == '+')) ++next;
    if (end - next > static_cast<std::ptrdiff_t>(mostDigits + 1)) return std::nullopt;
    std::uint64_t digits = 0;
    const char* point = nullptr;
    const char* const begin = next;
    for (; next != end; ++next) {
        const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*next)) - '0';
        if (digit <= 9) {
            digits = 10 * digits + digit;
        } else if (*next == '.' && point == nullptr) {
            point = next;
        } else {
            return std::nullopt;
        }
    }
    const auto numDigits = static_cast<std::size_t>(end - begin) - static_cast<std::size_t>(point != nullptr);
    if (numDigits == 0 || numDigits > mostDigits) return std::nullopt;
    auto magnitude = static_cast<double>(digits);
    if (point != nullptr) magnitude /= powersOfTen[static_cast<std::size_t>(end - point) - 1];
    return isNegative ? -magnitude : magnitude;
}

/// The value of a text whose form has been checked. The standard conversion does not know a plus sign.
template <class Result>
std::optional<Result> Convert(std::string_view text) {
    TakeOneOf("+", text);
    Result result{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc{}) return std::nullopt;
    return result;
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
    if (const std::optional<double> number = ConvertShortDecimal(text)) return number;
    const std::size_t wholeSize = text.size();
    text = WithoutBlanks(text);
    if (text.size() < wholeSize) {
        if (const std::optional<double> number = ConvertShortDecimal(text)) return number;
    }
    // The form is checked here because the standard conversion takes "inf", "nan" and leading parts as well.
    if (!IsDecimalNumber(text)) return std::nullopt;
    return Convert<double>(text);
}

std::optional<double> ReadRoundedNumber(std::string_view text) {
    if (const std::optional<double> number = ReadNumber(text)) return number;
    text = WithoutBlanks(text);
    if (IsDecimalNumber(text) && IsBelowOne(text)) return 0.0;
    return std::nullopt;
}

std::optional<int> ReadInt(std::string_view text) {
    text = WithoutBlanks(text);
    if (!IsWholeNumber(text)) return std::nullopt;
    return Convert<int>(text);
}

std::string FormatNumber(double number) {
    std::string text;
    AppendNumber(text, number);
    return text;
}

std::string FormatCount(double count) {
    constexpr int digitsBehindTheFirst = 14;
    std::array<char, 32> buffer{};
    const auto rounded = std::to_chars(buffer.data(), buffer.data() + buffer.size(), count,
                                       std::chars_format::scientific, digitsBehindTheFirst);
    return FormatNumber(ReadNumber({buffer.data(), rounded.ptr}).value_or(count));
}

}  // namespace nbscore

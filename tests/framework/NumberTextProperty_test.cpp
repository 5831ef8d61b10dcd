#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "framework/NumberText.h"

namespace {

using nbscore::FormatNumber;
using nbscore::ReadInt;
using nbscore::ReadNumber;

/// Doubles of every size: any bits that do not stand for an infinity or a NaN.
rc::Gen<double> FiniteDouble() {
    const auto bits = rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
    const auto number = rc::gen::map(bits, [](std::uint64_t pattern) { return std::bit_cast<double>(pattern); });
    return rc::gen::suchThat(number, [](double candidate) { return std::isfinite(candidate); });
}

/// Numbers as people write them: few digits, a moderate exponent.
rc::Gen<double> EverydayNumber() {
    return rc::gen::map(rc::gen::pair(rc::gen::inRange(-99999, 100000), rc::gen::inRange(-25, 26)),
                        [](const std::pair<int, int>& number) {
                            return std::strtod(
                                (std::to_string(number.first) + 'e' + std::to_string(number.second)).c_str(), nullptr);
                        });
}

/// Many numbers for each run of a property.
std::vector<double> ManyDoubles() {
    const auto number = rc::gen::oneOf(FiniteDouble(), EverydayNumber());
    return *rc::gen::container<std::vector<double>>(100, number);
}

/// The shortest "d.ddde±xx" that reads back, found by trying one more digit at a time.
std::string ShortestScientific(double number) {
    char text[64] = "";
    for (int decimals = 0; decimals <= 16; ++decimals) {
        std::snprintf(text, sizeof text, "%.*e", decimals, number);
        if (std::strtod(text, nullptr) == number) break;
    }
    return text;
}

/// The same digits in plain notation: the point moved to where the exponent says.
std::string InPlainNotation(const std::string& scientific) {
    const std::size_t mark = scientific.find('e');
    const int exponent = std::stoi(scientific.substr(mark + 1));
    const bool negative = scientific.front() == '-';
    std::string digits;
    std::copy_if(scientific.begin(), scientific.begin() + static_cast<std::ptrdiff_t>(mark), std::back_inserter(digits),
                 [](char character) { return character >= '0' && character <= '9'; });
    std::string plain;
    if (exponent < 0) {
        plain = "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    } else {
        const auto whole = static_cast<std::size_t>(exponent) + 1;
        if (digits.size() < whole) digits.resize(whole, '0');
        plain = digits.substr(0, whole);
        if (digits.size() > whole) plain += '.' + digits.substr(whole);
    }
    return negative ? '-' + plain : plain;
}

std::string ExpectedText(double number) {
    const std::string scientific = ShortestScientific(number);
    if (number == 0.0) return std::signbit(number) ? "-0" : "0";
    const int exponent = std::stoi(scientific.substr(scientific.find('e') + 1));
    return exponent >= -4 && exponent < 16 ? InPlainNotation(scientific) : scientific;
}

/// Doubles lie closer together below a power of two than above it. There the decimal number nearest to it need not
/// be the shortest that reads back, and trying digits is no oracle.
bool IsPowerOfTwo(double number) {
    return (std::bit_cast<std::uint64_t>(number) << 12) == 0;
}

RC_GTEST_PROP(NumberText, ReadsBackBitForBit, ()) {
    for (const double number : ManyDoubles()) {
        const auto readBack = ReadNumber(FormatNumber(number));
        RC_ASSERT(readBack.has_value());
        RC_ASSERT(std::bit_cast<std::uint64_t>(*readBack) == std::bit_cast<std::uint64_t>(number));
    }
}

RC_GTEST_PROP(NumberText, IsTheShortestInTheNotationOfItsSize, ()) {
    for (const double number : ManyDoubles()) {
        if (IsPowerOfTwo(number) && number != 0.0) continue;
        RC_ASSERT(FormatNumber(number) == ExpectedText(number));
    }
}

/// What the standard library writes in the notation of the number's size.
std::string TextOfTheStandardLibrary(double number) {
    const double magnitude = std::abs(number);
    const bool isPlain = magnitude == 0.0 || (magnitude >= 1e-4 && magnitude < 1e16);
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, number,
                                       isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    return {text, written.ptr};
}

RC_GTEST_PROP(NumberText, IsWhatTheStandardLibraryWrites, ()) {
    for (const double number : ManyDoubles())
        RC_ASSERT(FormatNumber(number) == TextOfTheStandardLibrary(number));
}

TEST(NumberText, IsWhatTheStandardLibraryWrites_AtTheEdgesOfEverySize) {
    const auto expectSame = [](std::uint64_t bits) {
        const auto number = std::bit_cast<double>(bits);
        if (std::isfinite(number)) {
            ASSERT_EQ(FormatNumber(number), TextOfTheStandardLibrary(number)) << bits;
        }
    };
    constexpr std::uint64_t fractions = std::uint64_t{1} << 52;
    for (std::uint64_t field = 0; field < 2047; ++field) {
        for (const std::uint64_t fraction : {std::uint64_t{0}, std::uint64_t{1}, fractions / 2, fractions - 1})
            ASSERT_NO_FATAL_FAILURE(expectSame(field * fractions + fraction));
    }
    for (int exponent = -324; exponent <= 308; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        for (std::uint64_t offset = 0; offset < 9; ++offset)
            ASSERT_NO_FATAL_FAILURE(expectSame(std::bit_cast<std::uint64_t>(power) + offset - 4));
    }
}

/// As scores are: quotients of which nearly all have 16 or 17 digits.
TEST(NumberText, IsWhatTheStandardLibraryWrites_ForManyProbabilities) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 200'000; ++i) {
        const auto one = static_cast<double>(random() >> 11);
        const double other = std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 40) - 20);
        const double probability = one / (one + other);
        ASSERT_EQ(FormatNumber(probability), TextOfTheStandardLibrary(probability));
    }
}

TEST(NumberText, IsWrittenToMemoryWithinItsBound) {
    for (const double number :
         {-std::numeric_limits<double>::max(), -0.00012345678901234567, -5e-324, -1.2345678901234567e-300,
          std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(), -0.0, 123456.0}) {
        std::string room(nbscore::mostNumberBytes + 1, '#');
        const char* const end = nbscore::WriteNumber(room.data(), number);
        EXPECT_EQ(room.back(), '#');
        EXPECT_EQ(room.substr(0, static_cast<std::size_t>(end - room.data())), FormatNumber(number));
    }
}

TEST(NumberText, IsNoLongerThanNeeded_ForAnyPowerOfTwo) {
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        const double number = std::ldexp(1.0, exponent);
        const std::string text = FormatNumber(number);
        EXPECT_EQ(ReadNumber(text), number) << text;
#ifndef _WIN32  // the C library reads numbers inexactly there, so that it is no oracle
        EXPECT_LE(text.size(), ExpectedText(number).size()) << text;
#endif
    }
}

/// Texts that are often nearly a number.
rc::Gen<std::string> NumberLikeText() {
    return rc::gen::container<std::string>(
        rc::gen::weightedOneOf<char>({{8, rc::gen::inRange('0', static_cast<char>('9' + 1))},
                                      {4, rc::gen::elementOf(std::string("+-.eE"))},
                                      {1, rc::gen::elementOf(std::string(" \t\r\nx,"))}}));
}

/// What the grammar and the C library, in the plain locale of tests, make of a text.
std::optional<double> ExpectedNumber(const std::string& text) {
    static const std::regex form("[ \t\r\n]*[+-]?(([0-9]+[.]?[0-9]*|[.][0-9]+)(?:[eE][+-]?[0-9]+)?)[ \t\r\n]*");
    std::smatch parts;
    if (!std::regex_match(text, parts, form)) return std::nullopt;
    const double number = std::strtod(text.c_str(), nullptr);
    const bool vanished = number == 0.0 && parts[2].str().find_first_of("123456789") != std::string::npos;
    if (!std::isfinite(number) || vanished) return std::nullopt;
    return number;
}

RC_GTEST_PROP(NumberText, ReadsWhatTheGrammarAllowsAndNothingElse, ()) {
    const auto texts =
        *rc::gen::container<std::vector<std::string>>(50, rc::gen::resize(*rc::gen::inRange(1, 12), NumberLikeText()));
    for (const std::string& text : texts) {
        RC_ASSERT(ReadNumber(text) == ExpectedNumber(text));
        if (const auto whole = ReadInt(text)) RC_ASSERT(ReadNumber(text) == static_cast<double>(*whole));
    }
}

/// What the standard conversion makes of digits and perhaps a point, with a sign in front.
std::optional<double> ConvertedByTheLibrary(std::string_view text) {
    if (text.starts_with("+-")) return std::nullopt;
    if (text.starts_with('+')) text.remove_prefix(1);
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Decimals around the length up to which one division tells their value.
rc::Gen<std::string> PlainDecimal() {
    const auto sign = rc::gen::element<std::string>("", "-", "+");
    const auto zeros = rc::gen::map(rc::gen::inRange<std::size_t>(0, 4),
                                    [](std::size_t count) { return std::string(count * count * count, '0'); });
    const auto digits = rc::gen::mapcat(rc::gen::inRange<std::size_t>(0, 19), [](std::size_t count) {
        return rc::gen::container<std::string>(count, rc::gen::inRange('0', static_cast<char>('9' + 1)));
    });
    const auto point = rc::gen::inRange<std::size_t>(0, 24);
    return rc::gen::map(rc::gen::tuple(sign, zeros, digits, point), [](const auto& parts) {
        const auto& [signText, leading, shown, pointAt] = parts;
        std::string number = leading + shown;
        if (pointAt <= number.size()) number.insert(pointAt, 1, '.');
        return signText + number;
    });
}

bool IsReadAsTheLibraryConvertsIt(const std::string& text) {
    const std::optional<double> expected = ConvertedByTheLibrary(text);
    const std::optional<double> number = ReadNumber(text);
    if (!expected || !number) return expected.has_value() == number.has_value();
    return std::bit_cast<std::uint64_t>(*number) == std::bit_cast<std::uint64_t>(*expected);
}

RC_GTEST_PROP(NumberText, ReadsDecimalsOfAnyLengthToTheLastBit, ()) {
    for (const std::string& text : *rc::gen::container<std::vector<std::string>>(200, PlainDecimal()))
        RC_ASSERT(IsReadAsTheLibraryConvertsIt(text));
}

TEST(NumberText, ReadsToTheLastBit_AtTheEdgesOfShortDecimals) {
    for (const char* text : {"-0",
                             "+0",
                             "-0.000",
                             ".5",
                             "5.",
                             "-.5",
                             "+1",
                             "-1.",
                             "0.1",
                             "0.3",
                             "999999999999999",
                             "9999999999999999",
                             "9007199254740993",
                             "0.999999999999999",
                             "0.9999999999999999",
                             ".000000000000001",
                             ".0000000000000001",
                             "1.00000000000000",
                             "123456789012345.6",
                             "000000000000000",
                             "0000000000000001",
                             "0.00000000000000000000001",
                             "",
                             ".",
                             "+",
                             "-",
                             "-.",
                             "1.2.3",
                             "..1",
                             "1..",
                             "--1",
                             "+-1",
                             "1-",
                             "1:",
                             "1/"}) {
        EXPECT_TRUE(IsReadAsTheLibraryConvertsIt(text)) << '"' << text << '"';
    }
}

RC_GTEST_PROP(NumberText, SurvivesAnyText, (const std::string& text)) {
    RC_ASSERT(std::isfinite(ReadNumber(text).value_or(0.0)));
    RC_ASSERT(ReadNumber(text).has_value() || !ReadInt(text).has_value());
}

RC_GTEST_PROP(ReadInt, ReadsEveryIntBack, (int number)) {
    RC_ASSERT(ReadInt(std::to_string(number)) == number);
}

RC_GTEST_PROP(SaturateToInt, IsTheNearestIntTowardZero, ()) {
    for (const double number : ManyDoubles()) {
        const double expected = std::clamp(std::trunc(number), -2147483648.0, 2147483647.0);
        RC_ASSERT(static_cast<double>(nbscore::SaturateToInt(number)) == expected);
    }
}

}  // namespace

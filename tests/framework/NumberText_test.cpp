#include "framework/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using nbscore::AppendNumber;
using nbscore::FormatCount;
using nbscore::FormatNumber;
using nbscore::ReadInt;
using nbscore::ReadNumber;
using nbscore::ReadRoundedNumber;
using nbscore::SaturateToInt;

using Limits = std::numeric_limits<double>;

TEST(ReadNumber, ReadsDecimalAndScientificNotation) {
    EXPECT_EQ(ReadNumber("0"), 0.0);
    EXPECT_EQ(ReadNumber("42"), 42.0);
    EXPECT_EQ(ReadNumber("007"), 7.0);
    EXPECT_EQ(ReadNumber("1.5"), 1.5);
    EXPECT_EQ(ReadNumber("5."), 5.0);
    EXPECT_EQ(ReadNumber(".5"), 0.5);
    EXPECT_EQ(ReadNumber("1e3"), 1000.0);
    EXPECT_EQ(ReadNumber("1E+3"), 1000.0);
    EXPECT_EQ(ReadNumber("25.e-1"), 2.5);
    EXPECT_EQ(ReadNumber(".5e01"), 5.0);
}

TEST(ReadNumber, TakesEitherSign) {
    EXPECT_EQ(ReadNumber("+2.5"), 2.5);
    EXPECT_EQ(ReadNumber("-2.5"), -2.5);
    EXPECT_TRUE(std::signbit(ReadNumber("-0").value()));
    EXPECT_FALSE(std::signbit(ReadNumber("+0").value()));
}

TEST(ReadNumber, PassesOverBlanksAroundTheNumber) {
    EXPECT_EQ(ReadNumber(" \t\r\n1.5\n\r\t "), 1.5);
    EXPECT_EQ(ReadNumber("\v1.5"), std::nullopt);
    EXPECT_EQ(ReadNumber("\f1.5"), std::nullopt);
    EXPECT_EQ(ReadNumber("\xC2\xA0"
                         "1.5"),
              std::nullopt);
}

TEST(ReadNumber, RefusesWhatIsNotWhollyANumber) {
    for (const char* text : {"",       " ",     "\t\n", ".",     "-",     "+",    "e5",   ".e5",      "1e",   "1e+",
                             "1.5.2",  "1,5",   "1 5",  "- 5",   "--5",   "+-5",  "-+5",  "5-",       "1e5.", "1e2e3",
                             "1d5",    "1f",    "0x10", "0x1p3", "inf",   "+inf", "-inf", "Infinity", "nan",  "NaN",
                             "nan(1)", "1_000", "abc",  "12abc", "1'000", "$5",   "5%",   "\"5\""}) {
        EXPECT_EQ(ReadNumber(text), std::nullopt) << '"' << text << '"';
    }
    EXPECT_EQ(ReadNumber(std::string_view("1\0", 2)), std::nullopt);
}

TEST(ReadNumber, RefusesWhatADoubleCannotHold) {
    EXPECT_EQ(ReadNumber("1e999"), std::nullopt);
    EXPECT_EQ(ReadNumber("-1e309"), std::nullopt);
    EXPECT_EQ(ReadNumber("1.7976931348623159e308"), std::nullopt);
    EXPECT_EQ(ReadNumber("1e-999"), std::nullopt);
    EXPECT_EQ(ReadNumber("2e-324"), std::nullopt);
    EXPECT_EQ(ReadNumber("1e99999999999999999999"), std::nullopt);
}

TEST(ReadNumber, ReadsTheLimitsOfADouble) {
    EXPECT_EQ(ReadNumber("1.7976931348623157e308"), Limits::max());
    EXPECT_EQ(ReadNumber("-1.7976931348623157e308"), Limits::lowest());
    EXPECT_EQ(ReadNumber("2.2250738585072014e-308"), Limits::min());
}

TEST(ReadNumber, ReadsDenormals) {
    EXPECT_EQ(ReadNumber("4.9406564584124654e-324"), Limits::denorm_min());
    EXPECT_EQ(ReadNumber("5e-324"), Limits::denorm_min());
    EXPECT_EQ(ReadNumber("-3e-324"), -Limits::denorm_min());
    EXPECT_EQ(ReadNumber("2.2250738585072011e-308"), std::nextafter(Limits::min(), 0.0));
}

TEST(ReadNumber, ReadsZero_WhateverItsExponent) {
    EXPECT_EQ(ReadNumber("0e999999999999"), 0.0);
    EXPECT_EQ(ReadNumber("0.000e-999999999999"), 0.0);
}

TEST(ReadNumber, ReadsVeryLongTexts) {
    const std::string zeros(100000, '0');
    EXPECT_EQ(ReadNumber(zeros + "7"), 7.0);
    EXPECT_EQ(ReadNumber("7." + zeros), 7.0);
    EXPECT_EQ(ReadNumber("1" + zeros), std::nullopt);
    EXPECT_EQ(ReadNumber("0." + std::string(100000, '3')), 1.0 / 3.0);
}

TEST(ReadNumber, RoundsToTheNearestDouble) {
    EXPECT_EQ(ReadNumber("9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(ReadNumber("9007199254740993.0000000000000000000000000000000000001"), 9007199254740994.0);
}

TEST(ReadRoundedNumber, Is0_WhereTheNumberIsTooSmallForADouble) {
    for (const std::string text : {"1e-400", "-1E-400", "0.1e-330", "10e-400", "123456e-99999999999999999999",
                                   "1e-330 ", "100000000000000000000e-400"})
        EXPECT_EQ(ReadRoundedNumber(text), 0.0) << text;
    EXPECT_EQ(ReadRoundedNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(ReadRoundedNumber(" 2.5"), 2.5);
    EXPECT_EQ(ReadRoundedNumber("5e-324"), 5e-324);
}

TEST(ReadRoundedNumber, RefusesWhatIsTooLarge) {
    for (const std::string text :
         {"1e400", "-1e400", "0.001e400", "1e99999999999999999999", "1e-400x", "e-400", "NaN", ""})
        EXPECT_FALSE(ReadRoundedNumber(text)) << text;
    EXPECT_FALSE(ReadRoundedNumber("1" + std::string(400, '0') + "e-10"));
}

TEST(ReadInt, ReadsWholeNumbersOf32Bits) {
    EXPECT_EQ(ReadInt("0"), 0);
    EXPECT_EQ(ReadInt(" +12\n"), 12);
    EXPECT_EQ(ReadInt("-007"), -7);
    EXPECT_EQ(ReadInt("2147483647"), 2147483647);
    EXPECT_EQ(ReadInt("-2147483648"), -2147483647 - 1);
}

TEST(ReadInt, RefusesEverythingElse) {
    for (const char* text : {"", " ", "+", "-", "1.0", "1.", "1e3", "2147483648", "-2147483649", "+-1", "1 2", "0x1",
                             "99999999999999999999", "one"}) {
        EXPECT_EQ(ReadInt(text), std::nullopt) << '"' << text << '"';
    }
}

TEST(FormatNumber, WritesPlainNumbersPlainly) {
    EXPECT_EQ(FormatNumber(0.0), "0");
    EXPECT_EQ(FormatNumber(1.0), "1");
    EXPECT_EQ(FormatNumber(-1.0), "-1");
    EXPECT_EQ(FormatNumber(0.5), "0.5");
    EXPECT_EQ(FormatNumber(0.1), "0.1");
    EXPECT_EQ(FormatNumber(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(FormatNumber(100000.0), "100000");
    EXPECT_EQ(FormatNumber(123456789.125), "123456789.125");
    EXPECT_EQ(FormatNumber(1.0 / 3.0), "0.3333333333333333");
}

TEST(FormatNumber, TurnsScientific_BelowOneTenThousandth) {
    EXPECT_EQ(FormatNumber(0.0001), "0.0001");
    EXPECT_EQ(FormatNumber(-0.00012345678901234567), "-0.00012345678901234567");
    EXPECT_EQ(FormatNumber(std::nextafter(0.0001, 0.0)), "9.999999999999999e-05");
    EXPECT_EQ(FormatNumber(1e-7), "1e-07");
    EXPECT_EQ(FormatNumber(-1.5e-10), "-1.5e-10");
}

TEST(FormatNumber, TurnsScientific_FromTenToTheSixteenth) {
    EXPECT_EQ(FormatNumber(1e15), "1000000000000000");
    EXPECT_EQ(FormatNumber(9999999999999998.0), "9999999999999998");
    EXPECT_EQ(FormatNumber(-9007199254740994.0), "-9007199254740994");
    EXPECT_EQ(FormatNumber(1e16), "1e+16");
    EXPECT_EQ(FormatNumber(1e22), "1e+22");
    EXPECT_EQ(FormatNumber(-1.25e100), "-1.25e+100");
}

TEST(FormatNumber, WritesTheLimitsOfADouble) {
    EXPECT_EQ(FormatNumber(Limits::max()), "1.7976931348623157e+308");
    EXPECT_EQ(FormatNumber(Limits::lowest()), "-1.7976931348623157e+308");
    EXPECT_EQ(FormatNumber(Limits::min()), "2.2250738585072014e-308");
    EXPECT_EQ(FormatNumber(Limits::denorm_min()), "5e-324");
}

TEST(FormatNumber, KeepsTheSignOfZero) {
    EXPECT_EQ(FormatNumber(-0.0), "-0");
}

TEST(FormatNumber, NamesWhatIsNoNumber) {
    EXPECT_EQ(FormatNumber(Limits::infinity()), "inf");
    EXPECT_EQ(FormatNumber(-Limits::infinity()), "-inf");
    EXPECT_EQ(FormatNumber(Limits::quiet_NaN()), "nan");
    EXPECT_EQ(FormatNumber(-Limits::quiet_NaN()), "nan");
}

TEST(AppendNumber, LeavesTheTextBeforeItAlone) {
    std::string text = "x = ";
    AppendNumber(text, 0.5);
    text += ", ";
    AppendNumber(text, Limits::quiet_NaN());
    EXPECT_EQ(text, "x = 0.5, nan");
}

TEST(FormatCount, LeavesOutDigitsThatSumsLeaveBehind) {
    EXPECT_EQ(FormatCount(435.00000000000045), "435");
    EXPECT_EQ(FormatCount(0.1 + 0.2), "0.3");
    EXPECT_EQ(FormatCount(150.0), "150");
    EXPECT_EQ(FormatCount(0.0), "0");
    EXPECT_EQ(FormatCount(12345678901234.5), "12345678901234.5");
    EXPECT_EQ(FormatCount(1e300), "1e+300");
    EXPECT_EQ(FormatCount(Limits::infinity()), "inf");
    EXPECT_EQ(FormatCount(Limits::quiet_NaN()), "nan");
    EXPECT_EQ(FormatCount(Limits::max()), FormatNumber(Limits::max()));
}

TEST(SaturateToInt, TruncatesTowardZero) {
    EXPECT_EQ(SaturateToInt(2.999), 2);
    EXPECT_EQ(SaturateToInt(-2.999), -2);
    EXPECT_EQ(SaturateToInt(-0.5), 0);
}

TEST(SaturateToInt, StaysWithin32Bits) {
    constexpr int largest = 2147483647;
    constexpr int smallest = -2147483647 - 1;
    EXPECT_EQ(SaturateToInt(2147483646.9), largest - 1);
    EXPECT_EQ(SaturateToInt(2147483647.0), largest);
    EXPECT_EQ(SaturateToInt(2147483647.5), largest);
    EXPECT_EQ(SaturateToInt(2147483648.0), largest);
    EXPECT_EQ(SaturateToInt(-2147483647.9), smallest + 1);
    EXPECT_EQ(SaturateToInt(-2147483648.0), smallest);
    EXPECT_EQ(SaturateToInt(-2147483649.0), smallest);
    EXPECT_EQ(SaturateToInt(Limits::infinity()), largest);
    EXPECT_EQ(SaturateToInt(-Limits::infinity()), smallest);
    EXPECT_EQ(SaturateToInt(Limits::quiet_NaN()), 0);
}

}  // namespace

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <limits>
#include <string>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

std::string Formatted(double number, const std::string& pattern) {
    return Call("formatNumber", {number, pattern});
}

std::string Formatted(const std::string& date, const std::string& pattern) {
    return Call("formatDatetime", {date, pattern});
}

TEST(FormatNumber, WritesWholeNumbers) {
    EXPECT_EQ(Formatted(2, "%3d"), "'  2'");
    EXPECT_EQ(Formatted(-2, "%i"), "'-2'");
    EXPECT_EQ(Formatted(7, "%03d"), "'007'");
    EXPECT_EQ(Formatted(-7, "%04d"), "'-007'");
    EXPECT_EQ(Formatted(7, "%-4d|"), "'7   |'");
    EXPECT_EQ(Formatted(7, "%+d"), "'+7'");
    EXPECT_EQ(Formatted(7, "% d"), "' 7'");
    EXPECT_EQ(Formatted(7, "%6.3d"), "'   007'");
    EXPECT_EQ(Formatted(7, "%06.3d"), "'   007'");
    EXPECT_EQ(Formatted(255, "%x %%"), "'ff %'");
    EXPECT_EQ(Formatted(255, "%X"), "'FF'");
    EXPECT_EQ(Formatted(8, "%o"), "'10'");
    EXPECT_EQ(Formatted(8, "%+u"), "'8'");
    EXPECT_EQ(Formatted(8, "%ld%%"), "'8%'");
}

TEST(FormatNumber, RoundsToWholeNumbersHalvesToEven) {
    EXPECT_EQ(Formatted(2.5, "%d"), "'2'");
    EXPECT_EQ(Formatted(2.9999999999999996, "%d"), "'3'");
    EXPECT_EQ(Formatted(-0.4, "%d"), "'0'");
    EXPECT_EQ(Formatted(-0.4, "%u"), "'0'");
    EXPECT_EQ(Formatted(1e22, "%d"), "'10000000000000000000000'");
}

TEST(FormatNumber, WritesDecimalsAndExponents) {
    EXPECT_EQ(Formatted(3.14159, "%.2f"), "'3.14'");
    EXPECT_EQ(Formatted(3.14159, "%f"), "'3.141590'");
    EXPECT_EQ(Formatted(2.5, "%.0f"), "'2'");
    EXPECT_EQ(Formatted(1234.5, "%e"), "'1.234500e+03'");
    EXPECT_EQ(Formatted(1234.5, "%.1E"), "'1.2E+03'");
    EXPECT_EQ(Formatted(0.0001, "%g"), "'0.0001'");
    EXPECT_EQ(Formatted(1e-5, "%G"), "'1E-05'");
    EXPECT_EQ(Formatted(100000, "%.3g"), "'1e+05'");
    EXPECT_EQ(Formatted(-1.5, "%08.2f"), "'-0001.50'");
    EXPECT_EQ(Formatted(0.1, "%s"), "'0.1'");
    EXPECT_EQ(Formatted(0.1, "%6s"), "'   0.1'");
}

TEST(FormatNumber, KeepsTheTextAround) {
    EXPECT_EQ(Formatted(5, "about 100%% of %d €"), "'about 100% of 5 €'");
}

TEST(FormatNumber, IsMissing_WhenThePatternIsInvalid) {
    for (const char* pattern : {"",       "abc",          "%",
                                "%%",     "%5",           "%.",
                                "%d%d",   "%d %",         "%n",
                                "%c",     "%p",           "%a",
                                "%1$d",   "%*d",          "%#x",
                                "%'d",    "%1000000000d", "%.1000000000f",
                                "%1001d", "%.1001f",      "%99999999999999999999d",
                                "%.2s",   "%5%",          "%d%n",
                                "%-"}) {
        EXPECT_EQ(Formatted(1, pattern), "missing") << pattern;
    }
    EXPECT_EQ(Formatted(1, "%1000d").size(), 1002U);
    EXPECT_EQ(Formatted(-std::numeric_limits<double>::max(), "%.1000f").size(), 1313U);
}

TEST(FormatNumber, IsMissing_WhenTheNumberDoesNotFit) {
    EXPECT_EQ(Formatted(-1, "%x"), "missing");
    EXPECT_EQ(Formatted(-1, "%u"), "missing");
    EXPECT_EQ(Formatted(18446744073709551616.0, "%x"), "missing");
    EXPECT_EQ(Formatted(18446744073709549568.0, "%x"), "'fffffffffffff800'");
    EXPECT_EQ(Formatted(std::nan(""), "%f"), "missing");
    EXPECT_EQ(Formatted(std::numeric_limits<double>::infinity(), "%d"), "missing");
    EXPECT_EQ(Call("formatNumber", {"one", "%d"}), "missing");
}

TEST(FormatNumber, NeverMakesATextLongerThanTheLongest) {
    EXPECT_EQ(Formatted(1, std::string(999'999, 'a') + "%d").size(), 1'000'002U);
    EXPECT_EQ(Formatted(1, std::string(999'999, 'a') + "%2d"), "missing");
}

RC_GTEST_PROP(FormatNumber, AgreesWithPrintf, (double number)) {
    const auto* pattern =
        *rc::gen::element("%f", "%e", "%g", "%.0f", "%.3e", "%.10g", "%+.0e", "%030.12f", "%-12.1G|", "%.0g");
    std::array<char, 500> expected{};
    // NOLINTNEXTLINE(clang-diagnostic-format-nonliteral): one of the patterns above
    std::snprintf(expected.data(), expected.size(), pattern, number);
    RC_ASSERT(Formatted(number, pattern) == "'" + std::string(expected.data()) + "'");
}

const std::string moment = "2024-02-29T17:05:09.75+02:00";

TEST(FormatDatetime, WritesDates) {
    EXPECT_EQ(Formatted(moment, "%Y-%m-%d %H:%M:%S"), "'2024-02-29 17:05:09'");
    EXPECT_EQ(Formatted(moment, "%d.%m.%y, day %j"), "'29.02.24, day 060'");
    EXPECT_EQ(Formatted(moment, "%A %a %B %b %h"), "'Thursday Thu February Feb Feb'");
    EXPECT_EQ(Formatted(moment, "%I:%M %p"), "'05:05 PM'");
    EXPECT_EQ(Formatted(moment, "%D %F %R %T %r"), "'02/29/24 2024-02-29 17:05 17:05:09 05:05:09 PM'");
    EXPECT_EQ(Formatted(moment, "%c|%x|%X"), "'Thu Feb 29 17:05:09 2024|02/29/24|17:05:09'");
    EXPECT_EQ(Formatted(moment, "%C %u %w %U %W %V %G %g"), "'20 4 4 08 09 09 2024 24'");
    EXPECT_EQ(Formatted("2024-02-09", "%e|%n|%t|%%"), "' 9|\n|\t|%'");
}

TEST(FormatDatetime, WritesTheOffsetThatTheTextHas) {
    EXPECT_EQ(Formatted(moment, "%z"), "'+0200'");
    EXPECT_EQ(Formatted("2024-02-29 00:00:00-05:30", "%z"), "'-0530'");
    EXPECT_EQ(Formatted("2024-02-29 00:00:00Z", "%z"), "'+0000'");
    EXPECT_EQ(Formatted("2024-02-29 00:00:00", "%z"), "''");
}

TEST(FormatDatetime, CountsTwelveHours) {
    EXPECT_EQ(Formatted("00:30:00", "%I %p"), "'12 AM'");
    EXPECT_EQ(Formatted("12:30:00", "%I %p"), "'12 PM'");
    EXPECT_EQ(Formatted("11:59:59", "%I %p"), "'11 AM'");
}

TEST(FormatDatetime, CountsWeeksAcrossYears) {
    EXPECT_EQ(Formatted("2021-01-01", "%G-W%V-%u %U %W"), "'2020-W53-5 00 00'");
    EXPECT_EQ(Formatted("2024-12-30", "%G-W%V-%u %U %W"), "'2025-W01-1 52 53'");
    EXPECT_EQ(Formatted("2023-01-01", "%U %W"), "'01 00'");
}

TEST(FormatDatetime, TakesADateAloneAsItsMidnight) {
    EXPECT_EQ(Formatted("0001-01-01", "%F %T"), "'0001-01-01 00:00:00'");
}

TEST(FormatDatetime, IsMissing_WhenATimeAloneIsFormattedAsADate) {
    EXPECT_EQ(Formatted("17:05:09", "%H"), "'17'");
    EXPECT_EQ(Formatted("17:05:09", "%Y"), "missing");
    EXPECT_EQ(Formatted("17:05:09", "%F"), "missing");
}

TEST(FormatDatetime, IsMissing_WhenThePatternOrTheDateIsInvalid) {
    for (const char* pattern : {"%", "%Q", "%Z", "%Ey", "%Od", "%s", "%1000000000d", "%-d", "%k", "%Y%"})
        EXPECT_EQ(Formatted(moment, pattern), "missing") << pattern;
    EXPECT_EQ(Formatted(moment, ""), "''");
    EXPECT_EQ(Formatted("today", "%Y"), "missing");
    EXPECT_EQ(Call("formatDatetime", {2024.0, "%Y"}), "missing");
}

TEST(FormatDatetime, NeverMakesATextLongerThanTheLongest) {
    std::string pattern;
    for (int i = 0; i < 50'000; ++i)
        pattern += "%c";
    EXPECT_EQ(Formatted(moment, pattern), "missing");
}

RC_GTEST_PROP(FormatDatetime, AgreesWithStrftime, ()) {
    const std::string pattern = "%a %A %b %B %C %d %e %g %G %H %I %j %m %M %p %S %u %U %V %w %W %y %Y %D %F %T";
    std::tm full{};
    full.tm_year = *rc::gen::inRange(-800, 1000);
    full.tm_mon = *rc::gen::inRange(0, 12);
    full.tm_mday = *rc::gen::inRange(1, 29);
    full.tm_hour = *rc::gen::inRange(0, 24);
    const std::chrono::year year(full.tm_year + 1900);
    const std::chrono::sys_days newYear(year / 1 / 1);
    const std::chrono::sys_days day(year / (full.tm_mon + 1) / full.tm_mday);
    full.tm_wday = static_cast<int>(std::chrono::weekday(day).c_encoding());
    full.tm_yday = static_cast<int>((day - newYear).count());
    std::array<char, 400> expected{};
    const std::size_t size = std::strftime(expected.data(), expected.size(), pattern.c_str(), &full);
    std::array<char, 40> iso{};
    std::snprintf(iso.data(), iso.size(), "%04d-%02d-%02dT%02d:00:00", full.tm_year + 1900, full.tm_mon + 1,
                  full.tm_mday, full.tm_hour);
    RC_ASSERT(Formatted(std::string(iso.data()), pattern) == "'" + std::string(expected.data(), size) + "'");
}

TEST(Formatting, GivesTheSame_WhetherThePatternIsConstantOrNot) {
    EXPECT_EQ(Applied("formatNumber", Number("5") + Text("%03d")), "text 005");
    EXPECT_EQ(Applied("formatNumber", Number("5") + Apply("concat", Text("%03") + Text("d"))), "text 005");
    EXPECT_EQ(Applied("formatDatetime", Text("2024-02-29") + Text("%d.%m.")), "text 29.02.");
    EXPECT_EQ(Applied("formatDatetime", Text("2024-02-29") + Apply("concat", Text("%d") + Text(".%m."))),
              "text 29.02.");
    EXPECT_EQ(Applied("formatNumber", Number("5") + Apply("concat", Text("%") + Text("n"))), "absent");
}

TEST(Formatting, IsMissing_WhenAnArgumentIs) {
    EXPECT_EQ(Applied("formatNumber", missingArgument + Text("%d")), "absent");
    EXPECT_EQ(Applied("formatNumber", Number("1") + missingArgument), "absent");
    EXPECT_EQ(Applied("formatDatetime", missingArgument + Text("%d")), "absent");
}

TEST(Formatting, IsRefusedWithTheDocument_WhenItsConstantPatternIsInvalid) {
    const auto number = RefusalOf([] { Applied("formatNumber", Number("1") + Text("%n")); });
    ASSERT_TRUE(number);
    EXPECT_EQ(number->GetCode(), VeskException::InvalidContent);
    EXPECT_EQ(
        number->GetMessage(),
        "The pattern \"%n\" of the function \"formatNumber\" cannot be used: its conversion is none of diuoxXfFeEgGs.");
    const auto date = RefusalOf([] { Applied("formatDatetime", Text("2024-02-29") + Text("%Q")); });
    ASSERT_TRUE(date);
    EXPECT_EQ(date->GetCode(), VeskException::InvalidContent);
}

}  // namespace
}  // namespace nbscore::test

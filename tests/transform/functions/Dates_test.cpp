#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>

#include "transform/functions/FunctionProbe.h"

namespace nbscore::test {
namespace {

TEST(DateDaysSinceYear, CountsFromTheFirstOfJanuary) {
    EXPECT_EQ(Call("dateDaysSinceYear", {"1960-01-01", 1960.0}), "0");
    EXPECT_EQ(Call("dateDaysSinceYear", {"2003-04-01", 1960.0}), "15796");
    EXPECT_EQ(Call("dateDaysSinceYear", {"1959-12-31", 1960.0}), "-1");
    EXPECT_EQ(Call("dateDaysSinceYear", {"1960-12-31", "1960"}), "365");
    EXPECT_EQ(Call("dateDaysSinceYear", {"1961-12-31", 1961.0}), "364");
    EXPECT_EQ(Call("dateDaysSinceYear", {"0000-01-01", 9999.0}), "-3652060");
}

TEST(DateDaysSinceYear, KnowsLeapYears) {
    EXPECT_EQ(Call("dateDaysSinceYear", {"2024-02-29", 2024.0}), "59");
    EXPECT_EQ(Call("dateDaysSinceYear", {"2000-02-29", 2000.0}), "59");
    EXPECT_EQ(Call("dateDaysSinceYear", {"2023-02-29", 2023.0}), "missing");
    EXPECT_EQ(Call("dateDaysSinceYear", {"1900-02-29", 1900.0}), "missing");
}

TEST(DateDaysSinceYear, TakesTheDateAsItIsWritten) {
    EXPECT_EQ(Call("dateDaysSinceYear", {"2024-01-02T00:30:00+02:00", 2024.0}), "1");
    EXPECT_EQ(Call("dateDaysSinceYear", {"2024-01-02 23:30:00", 2024.0}), "1");
}

TEST(DateSecondsSinceYear, CountsFromTheFirstSecond) {
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1960-01-01T00:00:00", 1960.0}), "0");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1960-01-03 03:30:03", 1960.0}), "185403");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1960-01-02", 1960.0}), "86400");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1959-12-31T23:59:59.999", 1960.0}), "-1");
}

TEST(DateSecondsSinceYear, GoesToUtc_WhenAnOffsetIsWritten) {
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1970-01-01T02:00:00+02:00", 1970.0}), "0");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1969-12-31T19:00:00-05:00", 1970.0}), "0");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"1970-01-01T00:00:00Z", 1970.0}), "0");
}

TEST(DateSecondsSinceMidnight, CountsFromMidnight) {
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"05:23:30"}), "19410");
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"23:59:59.9"}), "86399");
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"1970-01-01T00:00:01"}), "1");
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"1970-01-01T05:00:00-11:00"}), "18000");
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"1970-01-01"}), "0");
    EXPECT_EQ(Call("dateSecondsSinceMidnight", {"00:00:00Z"}), "0");
}

TEST(Dates, AreMissing_WhenTheTextHoldsNone) {
    for (const char* text : {"",
                             "today",
                             "2024",
                             "2024-1-1",
                             "2024-13-01",
                             "2024-00-01",
                             "2024-01-00",
                             "2024-01-32",
                             "2024-04-31",
                             "24-01-01",
                             "02024-01-01",
                             "-024-01-01",
                             "2024/01/01",
                             "20240101",
                             " 2024-01-01",
                             "2024-01-01 ",
                             "2024-01-01T",
                             "2024-01-01T12",
                             "2024-01-01T12:00",
                             "2024-01-01T24:00:00",
                             "2024-01-01T12:60:00",
                             "2024-01-01T12:00:60",
                             "2024-01-01T12:00:00.",
                             "2024-01-01T12:00:00+1",
                             "2024-01-01T12:00:00+15:00",
                             "2024-01-01T12:00:00+14:01",
                             "2024-01-01T12:00:00ZZ",
                             "2024-01-01t12:00:00",
                             "2024-01-01T1:00:00",
                             "2024-01-01T12:00:00 Z",
                             "2024-01-01Z",
                             "٢024-01-01"}) {
        EXPECT_EQ(Call("dateSecondsSinceYear", {text, 1970.0}), "missing") << text;
        EXPECT_EQ(Call("dateDaysSinceYear", {text, 1970.0}), "missing") << text;
        EXPECT_EQ(Call("dateSecondsSinceMidnight", {text}), "missing") << text;
    }
    for (const char* text : {"1:00:00", "24:00:00", "12:00", "12:00:00T", "12:", "12:00:0"})
        EXPECT_EQ(Call("dateSecondsSinceMidnight", {text}), "missing") << text;
    EXPECT_EQ(Call("dateDaysSinceYear", {"12:00:00", 1970.0}), "missing");
    EXPECT_EQ(Call("dateSecondsSinceYear", {"12:00:00", 1970.0}), "missing");
    EXPECT_EQ(Call("dateDaysSinceYear", {20240101.0, 1970.0}), "missing");
}

TEST(Dates, AreMissing_WhenTheYearIsInvalid) {
    for (const ExpressionValue& year :
         {ExpressionValue(1970.5), ExpressionValue(-1.0), ExpressionValue(10000.0), ExpressionValue(1e300),
          ExpressionValue(std::numeric_limits<double>::quiet_NaN()), ExpressionValue("year")}) {
        EXPECT_EQ(Call("dateDaysSinceYear", {"2024-01-01", year}), "missing");
        EXPECT_EQ(Call("dateSecondsSinceYear", {"2024-01-01", year}), "missing");
    }
}

TEST(Dates, AreMissing_WhenAnArgumentIs) {
    EXPECT_EQ(Applied("dateDaysSinceYear", missingArgument + Number("1960")), "absent");
    EXPECT_EQ(Applied("dateSecondsSinceYear", Text("1960-01-01") + missingArgument), "absent");
    EXPECT_EQ(Applied("dateSecondsSinceMidnight", missingArgument), "absent");
}

RC_GTEST_PROP(Dates, AreDaysAndSecondsOfTheDay_WhenNoOffsetIsWritten, ()) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", *rc::gen::inRange(0, 10000),
                  *rc::gen::inRange(1, 13), *rc::gen::inRange(1, 29), *rc::gen::inRange(0, 24),
                  *rc::gen::inRange(0, 60), *rc::gen::inRange(0, 60));
    const ExpressionValue date = std::string(text.data());
    const double year = *rc::gen::inRange(0, 10000);
    RC_ASSERT(NumberFrom("dateSecondsSinceYear", {date, year}) ==
              NumberFrom("dateDaysSinceYear", {date, year}) * 86400 + NumberFrom("dateSecondsSinceMidnight", {date}));
}

}  // namespace
}  // namespace nbscore::test

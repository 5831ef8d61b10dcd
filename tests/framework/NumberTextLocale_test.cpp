#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <sstream>

#include "framework/BaseDictVar.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"

namespace {

/// Numbers written with a decimal comma and with points between thousands.
class CommaPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

void ExpectNumbersWithPoints() {
    EXPECT_EQ(nbscore::FormatNumber(1234567.5), "1234567.5");
    EXPECT_EQ(nbscore::FormatNumber(1.5e-9), "1.5e-09");
    EXPECT_EQ(nbscore::ReadNumber("1234567.5"), 1234567.5);
    EXPECT_EQ(nbscore::ReadNumber("1,5"), std::nullopt);
    EXPECT_EQ(nbscore::ReadNumber("1.234.567"), std::nullopt);
    EXPECT_EQ(NumericValue("0.25").GetString(), "0.25");
}

TEST(NumberTextLocale, ChangesNothing_WhenTheCppLocaleHasACommaForThePoint) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
    std::ostringstream streamed;
    streamed << 1234.5;
    BaseDictVar x("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    x.AddInterval({ValueInterval::ClosedClosed, 0.5, 1000.0});
    std::ostringstream printed;
    x.Print(printed);
    ExpectNumbersWithPoints();
    std::locale::global(before);

    EXPECT_EQ(streamed.str(), "1.234,5") << "the locale under test was not in force";
    EXPECT_EQ(printed.str(), "x: continuous, numeric; intervals: [0.5, 1000]\n");
}

TEST(NumberTextLocale, ChangesNothing_WhenTheCLocaleHasACommaForThePoint) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    bool found = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "German"}) {
        if (!found && std::setlocale(LC_ALL, name) != nullptr) found = *std::localeconv()->decimal_point == ',';
    }
    if (found) ExpectNumbersWithPoints();
    std::setlocale(LC_ALL, before.c_str());
    if (!found) GTEST_SKIP() << "no locale with a decimal comma is installed";
}

}  // namespace

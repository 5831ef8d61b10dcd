#include "factors/KnownRows.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <vector>

#include "framework/MCMV.h"

namespace nbscore {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

NumberRows RowsOf(const std::vector<double>& numbers) {
    return NumberRows(numbers);
}

TEST(NumberRows, AreTheNumbersPositionsBehindMissingAndUnknown) {
    const NumberRows rows = RowsOf({3.0, -1.5, infinity});
    EXPECT_EQ(rows.GetNumRows(), 5u);
    EXPECT_EQ(rows.RowOf(3.0), 2u);
    EXPECT_EQ(rows.RowOf(-1.5), 3u);
    EXPECT_EQ(rows.RowOf(infinity), 4u);
    EXPECT_EQ(rows.RowOf(-infinity), unknownRow);
    EXPECT_EQ(rows.RowOf(std::nextafter(3.0, 4.0)), unknownRow);
}

TEST(NumberRows, AreTheSame_ForBothZeros) {
    EXPECT_EQ(RowsOf({1.0, -0.0}).RowOf(0.0), 3u);
    EXPECT_EQ(RowsOf({1.0, 0.0}).RowOf(-0.0), 3u);
}

TEST(NumberRows, AreUnknown_ForWhatIsNoNumber) {
    EXPECT_EQ(RowsOf({0.0}).RowOf(nan), unknownRow);
    EXPECT_EQ(RowsOf({}).RowOf(0.0), unknownRow);
}

TEST(NumberRows, FindATextByTheNumberItHolds) {
    const NumberRows rows = RowsOf({1.0, 0.5});
    EXPECT_EQ(rows.RowOf("1"), 2u);
    EXPECT_EQ(rows.RowOf(" 1.00 "), 2u);
    EXPECT_EQ(rows.RowOf("5e-1"), 3u);
    EXPECT_EQ(rows.RowOf("one"), unknownRow);
    EXPECT_EQ(rows.RowOf(""), unknownRow);
}

TEST(NumberRows, FindATextWithoutANumber_AsTheSystemMissingOne) {
    EXPECT_EQ(RowsOf({1.0, MCMV::gMissingValue}).RowOf("one"), 3u);
}

RC_GTEST_PROP(NumberRows, FindEachNumberAndNoOther, (const std::set<double>& known, double other)) {
    const std::vector<double> numbers(known.begin(), known.end());
    const NumberRows rows = RowsOf(numbers);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        RC_ASSERT(rows.RowOf(numbers[i]) == firstKnownRow + i);
    if (!known.contains(other)) RC_ASSERT(rows.RowOf(other) == unknownRow);
}

}  // namespace
}  // namespace nbscore

#include "factors/KnownRows.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace nbscore {
namespace {

using Numbers = std::vector<double>;

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

BinRows RowsOf(const std::vector<Numbers>& cutpoints) {
    std::vector<const Numbers*> lists;
    for (const Numbers& list : cutpoints)
        lists.push_back(&list);
    return BinRows(lists);
}

/// Whether every predictor's bin of the number's row is the one that a search finds.
bool LeadsToTheBins(const BinRows& rows, const std::vector<Numbers>& cutpoints, double number) {
    const FactorRow row = rows.RowOf(number);
    if (row < firstKnownRow || row >= rows.GetNumRows()) return false;
    for (std::size_t predictor = 0; predictor < cutpoints.size(); ++predictor) {
        if (rows.GetBin(predictor, row) != FindBin(cutpoints[predictor], number)) return false;
    }
    return true;
}

/// The numbers, those just beside them, those halfway between two, and some that are always of interest.
Numbers Interesting(const std::vector<Numbers>& cutpoints) {
    Numbers numbers = {nan, infinity, -infinity, 0.0, -0.0, 5e-324, -5e-324, 1.0, -1e308, 1e308};
    for (const Numbers& list : cutpoints) {
        for (const double one : list) {
            numbers.insert(numbers.end(), {one, std::nextafter(one, infinity), std::nextafter(one, -infinity)});
            for (const double other : list)
                numbers.push_back(one / 2 + other / 2);
        }
    }
    return numbers;
}

TEST(BinRows, AreOneForEachBin) {
    const BinRows rows = RowsOf({{1.0, 2.0}});
    EXPECT_EQ(rows.GetNumRows(), 5u);
    EXPECT_EQ(rows.RowOf(0.5), rows.RowOf(1.0));
    EXPECT_NE(rows.RowOf(1.0), rows.RowOf(1.5));
    EXPECT_EQ(rows.RowOf(1.5), rows.RowOf(2.0));
    EXPECT_EQ(rows.GetBin(0, rows.RowOf(2.5)), 2);
    EXPECT_EQ(rows.GetBin(0, rows.RowOf(nan)), 1);
}

TEST(BinRows, AreUnknown_ForTexts) {
    EXPECT_EQ(RowsOf({{1.0}}).RowOf("1"), unknownRow);
}

TEST(BinRows, TellNegativeNumbersFromOthers_WithoutCutpoints) {
    const BinRows rows = RowsOf({{}});
    EXPECT_EQ(rows.GetBin(0, rows.RowOf(-1.0)), 0);
    EXPECT_EQ(rows.GetBin(0, rows.RowOf(-0.0)), 1);
    EXPECT_EQ(rows.GetBin(0, rows.RowOf(nan)), 1);
}

rc::Gen<Numbers> Cutpoints() {
    // Few different ones, so that many are there twice; in any order.
    const auto number = rc::gen::weightedOneOf<double>(
        {{4, rc::gen::map(rc::gen::inRange(-6, 7), [](int whole) { return whole / 2.0; })},
         {2, rc::gen::element(infinity, -infinity, -0.0, nan, 5e-324, 1e308, -1e308)},
         {1, rc::gen::arbitrary<double>()}});
    return rc::gen::mapcat(rc::gen::inRange(0, 10), [number](int size) {
        // Lists of more than two dozen are searched in another way.
        return rc::gen::container<Numbers>(static_cast<std::size_t>(size == 9 ? 60 : size), number);
    });
}

RC_GTEST_PROP(BinRows, LeadToTheBinsThatASearchFinds, ()) {
    const auto cutpoints =
        *rc::gen::container<std::vector<Numbers>>(static_cast<std::size_t>(*rc::gen::inRange(1, 4)), Cutpoints());
    const BinRows rows = RowsOf(cutpoints);
    for (const double number : Interesting(cutpoints))
        RC_ASSERT(LeadsToTheBins(rows, cutpoints, number));
    for (const double number : *rc::gen::arbitrary<Numbers>())
        RC_ASSERT(LeadsToTheBins(rows, cutpoints, number));
}

RC_GTEST_PROP(BinRows, AreNoMoreThanAscendingBinsAndOneForNaN, (const std::set<double>& ascending)) {
    const BinRows rows = RowsOf({Numbers(ascending.begin(), ascending.end())});
    RC_ASSERT(rows.GetNumRows() <= firstKnownRow + std::max<std::size_t>(ascending.size() + 1, 2));
}

}  // namespace
}  // namespace nbscore

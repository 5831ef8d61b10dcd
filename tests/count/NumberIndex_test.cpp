#include "count/NumberIndex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<double> DrawNumbers(std::size_t count, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> draw(0.0, 1000.0);
    std::vector<double> numbers(count);
    std::ranges::generate(numbers, [&] { return draw(engine); });
    return numbers;
}

void AddLimited(NumberIndex& index, double number, std::size_t most) {
    index.FindOrAdd(number);
    index.LimitRows(most);
}

std::set<double> NumbersIn(const NumberIndex& index) {
    std::set<double> numbers;
    for (std::size_t i = 0; i < index.CountRows(); ++i)
        numbers.insert(index.GetNumber(firstKnownRow + static_cast<FactorRow>(i)));
    return numbers;
}

TEST(NumberIndex, GivesEachNumberARowOfItsOwn_AndItAgainLater) {
    NumberIndex index;
    const FactorRow first = index.FindOrAdd(2.5);
    const FactorRow second = index.FindOrAdd(-2.5);
    EXPECT_EQ(first, firstKnownRow);
    EXPECT_EQ(second, firstKnownRow + 1);
    EXPECT_EQ(index.FindOrAdd(2.5), first);
    EXPECT_EQ(index.GetNumber(second), -2.5);
    EXPECT_EQ(index.FindOrAdd(-0.0), index.FindOrAdd(0.0));
}

TEST(NumberIndex, KeepsAllRows_WhenTheyAreNotTooMany) {
    NumberIndex index;
    for (const double number : DrawNumbers(100, 1))
        index.FindOrAdd(number);
    EXPECT_THAT(index.LimitRows(100), IsEmpty());
    EXPECT_EQ(index.GetDroppedBits(), 0U);
    EXPECT_EQ(index.CountDistinct(), 100.0);
}

TEST(NumberIndex, RoundsUpAndTellsWhereEachRowIsThen_WhenThereAreTooMany) {
    const std::vector<double> numbers = DrawNumbers(1000, 2);
    NumberIndex index;
    for (const double number : numbers)
        index.FindOrAdd(number);
    const std::vector<FactorRow> newRows = index.LimitRows(200);
    ASSERT_EQ(newRows.size(), numbers.size());
    EXPECT_LE(index.CountRows(), 200U);
    EXPECT_GT(index.CountRows(), 90U);
    const std::set<double> standingFor = NumbersIn(index);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_EQ(index.GetNumber(newRows[i]), *standingFor.lower_bound(numbers[i]));
        EXPECT_EQ(index.FindOrAdd(numbers[i]), newRows[i]);
    }
}

TEST(NumberIndex, DoesNotDependOnTheOrder_NorOnWhenItWasLimited) {
    std::vector<double> numbers = DrawNumbers(5000, 3);
    NumberIndex often;
    for (const double number : numbers)
        AddLimited(often, number, 300);
    std::ranges::reverse(numbers);
    NumberIndex once;
    for (const double number : numbers)
        once.FindOrAdd(number);
    once.LimitRows(300);
    EXPECT_EQ(often.GetDroppedBits(), once.GetDroppedBits());
    EXPECT_EQ(NumbersIn(often), NumbersIn(once));
    EXPECT_EQ(often.CountDistinct(), once.CountDistinct());
}

TEST(NumberIndex, IsTheSameOfParts_WhenTheyArePutTogether) {
    const std::vector<double> numbers = DrawNumbers(4000, 4);
    NumberIndex whole;
    NumberIndex parts[2];
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        AddLimited(whole, numbers[i], 256);
        AddLimited(parts[i < 100 ? 0 : 1], numbers[i], 256);
    }
    ASSERT_EQ(parts[0].GetDroppedBits(), 0U);
    parts[0].RoundAs(parts[1]);
    const std::vector<FactorRow> rows = parts[0].Add(parts[1]);
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(parts[0].GetNumber(rows[i]), parts[1].GetNumber(firstKnownRow + static_cast<FactorRow>(i)));
    parts[0].LimitRows(256);
    EXPECT_EQ(NumbersIn(parts[0]), NumbersIn(whole));
    EXPECT_EQ(parts[0].CountDistinct(), whole.CountDistinct());
}

TEST(NumberIndex, EstimatesHowManyNumbersThereWere_WhenTheyShareRows) {
    for (const std::size_t count : {2000U, 20'000U, 200'000U}) {
        NumberIndex index;
        for (std::size_t i = 0; i < count; ++i)
            AddLimited(index, static_cast<double>(i) * 3.0, 500);
        EXPECT_NEAR(index.CountDistinct() / static_cast<double>(count), 1.0, 0.05) << count;
    }
}

TEST(NumberIndex, RoundsNumbersBelowZeroUp_AndTheLargestToInfinity) {
    NumberIndex index;
    index.FindOrAdd(-std::numeric_limits<double>::max());
    index.FindOrAdd(std::numeric_limits<double>::max());
    for (int i = 0; i < 1000; ++i)
        index.FindOrAdd(-1.0 - i / 1024.0);
    index.LimitRows(64);
    const std::set<double> numbers = NumbersIn(index);
    EXPECT_EQ(*numbers.rbegin(), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(numbers.contains(-1.0));
    EXPECT_FALSE(numbers.contains(-2.0));
}

}  // namespace
}  // namespace nbscore::test

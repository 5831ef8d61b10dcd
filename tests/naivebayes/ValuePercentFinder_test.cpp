#include "naivebayes/ValuePercentFinder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <memory>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace {

using Entries = ValuePercentFinder::Entries;

/// A number that counts how often it is compared.
class CountingNumber : public NumericValue {
public:
    CountingNumber(double number, long& counter) : NumericValue(number), comparisons(&counter) {}
    bool operator==(const ScoreValue& other) const override {
        ++*comparisons;
        return NumericValue::operator==(other);
    }

private:
    long* comparisons;
};

/// A value of the third kind: equal to every value whose text has the same length.
class LengthValue : public StringValue {
public:
    using StringValue::StringValue;
    bool operator==(const ScoreValue& other) const override {
        ++comparisons;
        return other.GetString().size() == GetText().size();
    }
    ValueType GetType() const override { return Vector; }

    inline static long comparisons = 0;
};

/// What every answer must be.
std::size_t NaiveFind(const Entries& entries, const ScoreValue& value) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (*entries[i].first == value) return i;
    }
    return ValuePercentFinder::notFound;
}

/// Asks as a result does: what is not found is appended.
std::size_t Ask(ValuePercentFinder& finder, Entries& entries, ScoreValue* value) {
    const std::size_t position = finder.FindNext(entries, value);
    if (position == ValuePercentFinder::notFound) entries.emplace_back(value, 0.0);
    return position;
}

std::vector<std::unique_ptr<ScoreValue>> CountingNumbers(int number, long& counter) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    for (int i = 0; i < number; ++i)
        values.push_back(std::make_unique<CountingNumber>(i, counter));
    return values;
}

TEST(ValuePercentFinder, ComparesLittle_WhenALongListIsFilledForTheFirstTime) {
    long comparisons = 0;
    const auto values = CountingNumbers(1000, comparisons);
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    EXPECT_EQ(entries.size(), 1000u);
    EXPECT_LT(comparisons, 1000);
}

TEST(ValuePercentFinder, ComparesNothing_WhenAListIsFilledAgain) {
    for (const int categories : {3, 1000}) {
        long comparisons = 0;
        const auto values = CountingNumbers(categories, comparisons);
        ValuePercentFinder finder;
        Entries entries;
        for (const auto& value : values)
            Ask(finder, entries, value.get());
        for (int round = 0; round < 3; ++round) {
            comparisons = 0;
            for (std::size_t i = 0; i < values.size(); ++i) {
                ASSERT_EQ(Ask(finder, entries, values[i].get()), i);
            }
            EXPECT_EQ(comparisons, 0);
        }
    }
}

TEST(ValuePercentFinder, ComparesOncePerEntry_WhenAListOfAnotherTypeIsFilledAgain) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    for (std::size_t length = 0; length < 100; ++length) {
        values.push_back(std::make_unique<LengthValue>(std::string(length, 'x')));
    }
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    LengthValue::comparisons = 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(Ask(finder, entries, values[i].get()), i);
    EXPECT_EQ(LengthValue::comparisons, 100);
}

TEST(ValuePercentFinder, ComparesLittle_WhenEqualValuesOfAnotherModelCome) {
    long comparisons = 0;
    const auto values = CountingNumbers(1000, comparisons);
    const auto equals = CountingNumbers(1000, comparisons);
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    comparisons = 0;
    for (std::size_t i = 0; i < equals.size(); ++i)
        ASSERT_EQ(Ask(finder, entries, equals[i].get()), i);
    EXPECT_LT(comparisons, 1000);
}

TEST(ValuePercentFinder, ComparesLittle_WhenALongListIsAskedWithoutChange) {
    long comparisons = 0;
    const auto values = CountingNumbers(1000, comparisons);
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    comparisons = 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(finder.Find(entries, values[i].get()), i);
    EXPECT_LT(comparisons, 1000);
}

TEST(ValuePercentFinder, FindsNothing_WhenAskedForNull) {
    NumericValue one(1);
    ValuePercentFinder finder;
    const Entries entries{{nullptr, 0.5}, {&one, 0.5}};
    EXPECT_EQ(finder.Find(entries, nullptr), ValuePercentFinder::notFound);
    EXPECT_EQ(finder.FindNext(entries, nullptr), ValuePercentFinder::notFound);
    EXPECT_EQ(finder.FindNext(entries, &one), 1u);
}

TEST(ValuePercentFinder, FindsNothing_AfterReset) {
    long comparisons = 0;
    const auto values = CountingNumbers(100, comparisons);
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    entries.clear();
    finder.Reset();
    EXPECT_EQ(finder.Find(entries, values[50].get()), ValuePercentFinder::notFound);
    EXPECT_EQ(Ask(finder, entries, values[50].get()), ValuePercentFinder::notFound);
    EXPECT_EQ(Ask(finder, entries, values[50].get()), 0u);
}

TEST(ValuePercentFinder, TellsNumbersFromTexts_WhenTheListIsLong) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    for (int i = 0; i < 50; ++i) {
        values.push_back(std::make_unique<NumericValue>(i));
        values.push_back(std::make_unique<StringValue>(std::to_string(i)));
    }
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        EXPECT_EQ(Ask(finder, entries, value.get()), ValuePercentFinder::notFound);
    const NumericValue number(41);
    const StringValue text("41");
    EXPECT_EQ(finder.Find(entries, &number), 82u);
    EXPECT_EQ(finder.Find(entries, &text), 83u);
}

TEST(ValuePercentFinder, TakesNegativeAndPositiveZeroForEqual_WhenTheListIsLong) {
    long comparisons = 0;
    const auto values = CountingNumbers(100, comparisons);
    ValuePercentFinder finder;
    Entries entries;
    for (const auto& value : values)
        Ask(finder, entries, value.get());
    NumericValue negativeZero(-0.0);
    EXPECT_EQ(finder.FindNext(entries, &negativeZero), 0u);
}

TEST(ValuePercentFinder, NeverFindsNaN) {
    NumericValue nan(std::numeric_limits<double>::quiet_NaN());
    ValuePercentFinder finder;
    Entries entries;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(Ask(finder, entries, &nan), ValuePercentFinder::notFound);
        EXPECT_EQ(finder.Find(entries, &nan), ValuePercentFinder::notFound);
    }
}

/// A value of one of several kinds, often equal to another one made here.
std::unique_ptr<ScoreValue> MakeValue(int kind, int content) {
    const double numbers[] = {0.0, -0.0, std::numeric_limits<double>::quiet_NaN()};
    if (kind == 0) return std::make_unique<StringValue>(std::to_string(content));
    if (kind == 1) return std::make_unique<LengthValue>(std::to_string(content));
    if (kind == 2) return std::make_unique<NumericValue>(numbers[static_cast<std::size_t>(content % 3)]);
    return std::make_unique<NumericValue>(content);
}

RC_GTEST_PROP(ValuePercentFinder, AnswersAsASearchFromTheFrontWould, ()) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    const bool withOtherTypes = *rc::gen::arbitrary<bool>();
    const int distinct = *rc::gen::inRange(1, 300);
    for (int i = 0; i < 150; ++i) {
        int kind = *rc::gen::inRange(0, 5);
        if (kind == 1 && !withOtherTypes) kind = 3;
        values.push_back(MakeValue(kind, *rc::gen::inRange(0, distinct)));
    }
    ValuePercentFinder finder;
    Entries entries;
    for (int step = 0; step < 300; ++step) {
        const bool inOrder = *rc::gen::inRange(0, 4) > 0;
        const auto position = static_cast<std::size_t>(inOrder ? step % 150 : *rc::gen::inRange(0, 150));
        ScoreValue* value = values[position].get();
        const std::size_t expected = NaiveFind(entries, *value);
        RC_ASSERT(finder.Find(entries, value) == expected);
        RC_ASSERT(Ask(finder, entries, value) == expected);
        if (*rc::gen::inRange(0, 50) == 0) finder = ValuePercentFinder(finder);
    }
}

}  // namespace

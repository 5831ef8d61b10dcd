#include "selflearning/VectorValue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "selflearning/SelfLearningResult.h"

namespace {

using Descriptor = SelfLearningResult::ModelDescriptor;
using List = VectorValue<Descriptor>;

/// So many descriptors, named from "a" on.
std::vector<Descriptor> Named(int number, double score = 0.5) {
    std::vector<Descriptor> descriptors;
    for (int i = 0; i < number; ++i)
        descriptors.push_back({std::string(1, static_cast<char>('a' + i)), score, 1.0, 2.0});
    return descriptors;
}

std::string Names(const List& list) {
    std::string names;
    for (const Descriptor& descriptor : list.GetVectorValue())
        names += descriptor.modelName;
    return names;
}

TEST(VectorValue, KeepsEveryFigureOfItsElements) {
    const List list({{"a", 0.25, 1.5, MCMV::gMissingValue}});
    ASSERT_EQ(list.Size(), 1);
    const Descriptor& descriptor = list.GetVectorValue()[0];
    EXPECT_EQ(descriptor.modelName, "a");
    EXPECT_EQ(descriptor.score, 0.25);
    EXPECT_EQ(descriptor.assessmentMean, 1.5);
    EXPECT_EQ(descriptor.assessmentStdDev, MCMV::gMissingValue);
}

TEST(VectorValue, IsItsLength_WhenReadAsAValue) {
    for (const int length : {0, 1, 3}) {
        const List list(Named(length));
        EXPECT_EQ(list.Size(), length);
        EXPECT_EQ(list.GetInt(), length);
        EXPECT_EQ(list.GetString(), "Vector Value: Length of vector = " + std::to_string(length) + "\n");
        EXPECT_EQ(list.GetDouble(), MCMV::gMissingValue);
        EXPECT_FALSE(list.IsSystemMissingValue());
        EXPECT_EQ(list.GetType(), 2);
    }
}

TEST(VectorValue, ComparesByLengthAlone_WhateverItHolds) {
    const List lowScores(Named(3, 0.1)), highScores(Named(3, 0.9)), shorter(Named(2, 0.1));
    const ScoreValue& three = lowScores;
    const ScoreValue& otherThree = highScores;
    const ScoreValue& two = shorter;
    EXPECT_TRUE(three == otherThree);
    EXPECT_TRUE(three <= otherThree);
    EXPECT_TRUE(three >= otherThree);
    EXPECT_FALSE(three < otherThree);
    EXPECT_FALSE(three > otherThree);
    EXPECT_TRUE(two < three);
    EXPECT_TRUE(two <= three);
    EXPECT_FALSE(two == three);
    EXPECT_FALSE(two > three);
    EXPECT_FALSE(two >= three);
    EXPECT_TRUE(three > two);
    EXPECT_TRUE(three >= two);
    EXPECT_FALSE(three < two);
    EXPECT_FALSE(three <= two);
}

TEST(VectorValue, ComparesItsLengthWithTheWholeNumber_WhenTheOtherIsNoList) {
    const List threeElements(Named(3)), noElements({});
    const ScoreValue& three = threeElements;
    const ScoreValue& none = noElements;
    const auto number = [](double value) { return NumericValue(value); };
    EXPECT_TRUE(three.operator==(number(3)));
    EXPECT_TRUE(three.operator==(number(3.9)));
    EXPECT_TRUE(three.operator==(StringValue("3")));
    EXPECT_TRUE(three.operator==(VectorValue<int>({7, 8, 9})));
    EXPECT_TRUE(none.operator==(number(0)));
    EXPECT_FALSE(three.operator==(number(2.9)));
    EXPECT_TRUE(three < number(4));
    EXPECT_TRUE(three <= number(3));
    EXPECT_TRUE(three >= number(3));
    EXPECT_TRUE(three > number(2.9));
    EXPECT_TRUE(three > number(NumericValue::GetSysmisValue()));
    EXPECT_TRUE(three > StringValue("no number"));
}

TEST(VectorValue, IgnoresBothRefinements_WhenAskedForEquality) {
    const List three(Named(3)), two(Named(2));
    const NumericValue number(3), missing(NumericValue::GetSysmisValue());
    for (const bool ignoreCase : {false, true}) {
        for (const bool missingEqual : {false, true}) {
            EXPECT_TRUE(three.Equal(&number, ignoreCase, missingEqual));
            EXPECT_TRUE(three.Equal(&three, ignoreCase, missingEqual));
            EXPECT_FALSE(three.Equal(&two, ignoreCase, missingEqual));
            EXPECT_FALSE(three.Equal(&missing, ignoreCase, missingEqual));
            EXPECT_FALSE(three.Equal(nullptr, ignoreCase, missingEqual));
        }
    }
}

TEST(VectorValue, TakesOverTheList_WhenSetToAnotherOfItsKind) {
    List list(Named(1));
    const List other(Named(3));
    list.SetValue(&other);
    EXPECT_EQ(Names(list), "abc");
    EXPECT_EQ(other.Size(), 3);
    list.GetVectorValue().clear();
    EXPECT_EQ(Names(other), "abc");
}

TEST(VectorValue, IsEmpty_WhenSetToAnythingElse) {
    const NumericValue number(3);
    const StringValue text("abc");
    const VectorValue<int> numbers({1, 2, 3});
    for (const ScoreValue* value : std::vector<const ScoreValue*>{&number, &text, &numbers, nullptr}) {
        List list(Named(3));
        list.SetValue(value);
        EXPECT_EQ(list.Size(), 0);
    }
}

TEST(VectorValue, KeepsItsList_WhenSetToItself) {
    List list(Named(3));
    list.SetValue(&list);
    EXPECT_EQ(Names(list), "abc");
}

TEST(VectorValue, ReplacesItsWholeList_WhenGivenAnother) {
    List list(Named(3));
    list.SetVectorValue(Named(2));
    EXPECT_EQ(Names(list), "ab");
    list.SetVectorValue({});
    EXPECT_EQ(list.Size(), 0);
}

TEST(VectorValue, KeepsItsList_WhenGivenItsOwn) {
    List list(Named(3));
    list.SetVectorValue(list.GetVectorValue());
    EXPECT_EQ(Names(list), "abc");
}

TEST(VectorValue, ShowsItsListForChange) {
    List list(Named(2));
    list.GetVectorValue().push_back({"z", 0, 0, 0});
    EXPECT_EQ(Names(list), "abz");
    EXPECT_EQ(list.GetInt(), 3);
}

TEST(VectorValue, CopiesAreIndependent) {
    List list(Named(3));
    const std::unique_ptr<ScoreValue> clone(list.Clone());
    const std::unique_ptr<ScoreValue> value(list.GetValue());
    const List copy(list);
    List assigned({});
    assigned = list;
    EXPECT_NE(clone.get(), &list);
    EXPECT_NE(value.get(), clone.get());
    list.GetVectorValue()[0].modelName = "changed";
    for (const ScoreValue* copied : std::vector<const ScoreValue*>{clone.get(), value.get(), &copy, &assigned}) {
        const auto* copiedList = dynamic_cast<const List*>(copied);
        ASSERT_NE(copiedList, nullptr);
        EXPECT_EQ(Names(*copiedList), "abc");
    }
}

}  // namespace

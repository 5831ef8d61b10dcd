#include "framework/BaseDictVar.h"

#include <gtest/gtest.h>

#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace {

std::unique_ptr<ScoreValue> Number(double number) {
    return std::make_unique<NumericValue>(number);
}
std::unique_ptr<ScoreValue> Text(const std::string& text) {
    return std::make_unique<StringValue>(text);
}

TEST(BaseDictVar, TellsWhatItWasMadeWith) {
    const BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    const BaseDictVar color("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);

    EXPECT_EQ(age.GetName(), "age");
    EXPECT_EQ(age.GetStorageType(), 0);
    EXPECT_EQ(age.GetMeasureLevel(), 0);
    EXPECT_EQ(color.GetName(), "color");
    EXPECT_EQ(color.GetStorageType(), 1);
    EXPECT_EQ(color.GetMeasureLevel(), 2);
}

TEST(BaseDictVar, HasNoPositionAndNothingDeclared_WhenNew) {
    const BaseDictVar variable("x", ScoreDictVar::StringStorage, ScoreDictVar::Ordinal);

    EXPECT_EQ(variable.GetIndex(), -1);
    EXPECT_EQ(variable.GetValueLabelSet(), nullptr);
    EXPECT_TRUE(variable.GetIntervals().empty());
    EXPECT_TRUE(variable.GetInvalidValues().empty());
    EXPECT_FALSE(variable.HoldsTruthValues());
    EXPECT_EQ(variable.GetDisplayName(), "");
}

TEST(BaseDictVar, RemembersItsPosition) {
    BaseDictVar variable("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    variable.SetIndex(7);
    EXPECT_EQ(variable.GetIndex(), 7);
    variable.SetIndex(-1);
    EXPECT_EQ(variable.GetIndex(), -1);
}

TEST(BaseDictVar, GivesItsValidValuesInOrder) {
    BaseDictVar color("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    color.AddValidValue(Text("red"), "");
    color.AddValidValue(Text("green"), "Green leaf");

    const auto& labels = color.GetValueLabelSet()->GetValueLabels();
    ASSERT_EQ(labels.size(), 2U);
    EXPECT_EQ(labels[0].GetValue()->GetString(), "red");
    EXPECT_EQ(labels[0].GetDisplayValue(), "");
    EXPECT_EQ(labels[1].GetValue()->GetString(), "green");
    EXPECT_EQ(labels[1].GetDisplayValue(), "Green leaf");
}

TEST(BaseDictVar, KeepsValuesWhereTheyAre_WhenMoreAreDeclared) {
    BaseDictVar variable("x", ScoreDictVar::NumericStorage, ScoreDictVar::Categorical);
    variable.AddValidValue(Number(0.0), "");
    const ScoreValue* const first = variable.GetValueLabelSet()->GetValueLabels()[0].GetValue();
    for (int number = 1; number < 100; ++number)
        variable.AddValidValue(Number(number), "");

    EXPECT_EQ(variable.GetValueLabelSet()->GetValueLabels()[0].GetValue(), first);
}

TEST(BaseDictVar, HasNoValueSet_WhenOnlyMissingValuesAreDeclared) {
    BaseDictVar variable("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    variable.AddMissingValue(Number(99.0));

    EXPECT_EQ(variable.GetValueLabelSet(), nullptr);
}

TEST(BaseDictVar, TakesDeclaredMissingValuesAsMissing) {
    BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    age.AddMissingValue(Number(-1.0));
    age.AddMissingValue(Number(99.0));
    age.AddValidValue(Number(5.0), "");

    EXPECT_TRUE(age.IsMissingValue(Number(-1.0).get()));
    EXPECT_TRUE(age.IsMissingValue(Number(99.0).get()));
    EXPECT_FALSE(age.IsMissingValue(Number(5.0).get()));
    EXPECT_FALSE(age.IsMissingValue(Number(98.999999).get()));
}

TEST(BaseDictVar, TakesSystemMissingAsMissing_WhateverIsDeclared) {
    const BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);

    EXPECT_TRUE(age.IsMissingValue(Number(NumericValue::GetSysmisValue()).get()));
    EXPECT_FALSE(age.IsMissingValue(Number(0.0).get()));
}

TEST(BaseDictVar, TakesNoTextForADeclaredNumber) {
    BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    age.AddMissingValue(Number(99.0));

    EXPECT_FALSE(age.IsMissingValue(Text("99").get()));
}

TEST(BaseDictVar, ComparesDeclaredTextsExactly) {
    BaseDictVar color("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    color.AddMissingValue(Text("n/a"));

    EXPECT_TRUE(color.IsMissingValue(Text("n/a").get()));
    EXPECT_FALSE(color.IsMissingValue(Text("N/A").get()));
    EXPECT_FALSE(color.IsMissingValue(Text("").get()));
}

TEST(BaseDictVar, KeepsInvalidValuesApartFromAllOthers) {
    BaseDictVar age("age", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    age.AddInvalidValue(Number(-1.0));

    ASSERT_EQ(age.GetInvalidValues().size(), 1U);
    EXPECT_EQ(*age.GetInvalidValues()[0], NumericValue(-1.0));
    EXPECT_EQ(age.GetValueLabelSet(), nullptr);
    EXPECT_FALSE(age.IsMissingValue(Number(-1.0).get()));
}

TEST(BaseDictVar, TakesNullForNoMissingValue) {
    const BaseDictVar variable("x", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);

    EXPECT_FALSE(variable.IsMissingValue(nullptr));
}

TEST(BaseDictVar, CopiesEverything_WhenCloned) {
    BaseDictVar original("color", ScoreDictVar::StringStorage, ScoreDictVar::Ordinal);
    original.SetDisplayName("Color of the leaf");
    original.AddValidValue(Text("red"), "Red leaf");
    original.AddMissingValue(Text("?"));
    original.AddInvalidValue(Text("!"));
    original.SetHoldsTruthValues(true);
    original.AddInterval({ValueInterval::OpenClosed, 1.0, 2.0});
    original.SetIndex(3);

    const std::unique_ptr<ScoreDictVar> clone(original.Clone());
    const auto* copy = dynamic_cast<const BaseDictVar*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetName(), "color");
    EXPECT_EQ(copy->GetDisplayName(), "Color of the leaf");
    EXPECT_EQ(copy->GetStorageType(), 1);
    EXPECT_EQ(copy->GetMeasureLevel(), 1);
    EXPECT_EQ(copy->GetIndex(), 3);
    EXPECT_TRUE(copy->IsMissingValue(Text("?").get()));
    ASSERT_EQ(copy->GetInvalidValues().size(), 1U);
    EXPECT_EQ(*copy->GetInvalidValues()[0], StringValue("!"));
    EXPECT_TRUE(copy->HoldsTruthValues());
    ASSERT_EQ(copy->GetIntervals().size(), 1U);
    EXPECT_EQ(copy->GetIntervals()[0].closure, ValueInterval::OpenClosed);
    EXPECT_EQ(copy->GetIntervals()[0].rightMargin, 2.0);
    ASSERT_EQ(copy->GetValueLabelSet()->GetValueLabels().size(), 1U);
    EXPECT_EQ(copy->GetValueLabelSet()->GetValueLabels()[0].GetDisplayValue(), "Red leaf");
}

TEST(BaseDictVar, SharesNothingWithItsClone) {
    auto original = std::make_unique<BaseDictVar>("color", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    original->AddValidValue(Text("red"), "");
    original->AddMissingValue(Text("?"));
    const std::unique_ptr<ScoreDictVar> clone(original->Clone());
    original->SetIndex(5);
    original->AddValidValue(Text("green"), "");
    original.reset();

    EXPECT_EQ(clone->GetIndex(), -1);
    ASSERT_EQ(clone->GetValueLabelSet()->GetValueLabels().size(), 1U);
    EXPECT_EQ(clone->GetValueLabelSet()->GetValueLabels()[0].GetValue()->GetString(), "red");
    EXPECT_TRUE(clone->IsMissingValue(Text("?").get()));
}

}  // namespace

#include "framework/ScoreValueLabelSet.h"

#include <gtest/gtest.h>

#include "framework/DeathWatch.h"
#include "framework/StringValue.h"

namespace {

ScoreValueLabel Label(const std::string& value, const std::string& displayValue) {
    return ScoreValueLabel(std::make_unique<StringValue>(value), displayValue);
}

TEST(ScoreValueLabel, GivesItsValueAndTheTextShown) {
    const ScoreValueLabel label = Label("m", "male");

    EXPECT_EQ(label.GetValue()->GetString(), "m");
    EXPECT_EQ(label.GetDisplayValue(), "male");
}

TEST(ScoreValueLabel, HasAValueOfItsOwn_WhenCopied) {
    const ScoreValueLabel original = Label("m", "male");
    const ScoreValueLabel copy = original;

    EXPECT_NE(copy.GetValue(), original.GetValue());
    EXPECT_EQ(copy.GetValue()->GetString(), "m");
    EXPECT_EQ(copy.GetDisplayValue(), "male");
}

TEST(ScoreValueLabel, HasAValueOfItsOwn_WhenAssigned) {
    const ScoreValueLabel original = Label("m", "male");
    ScoreValueLabel assigned = Label("f", "female");
    assigned = original;

    EXPECT_NE(assigned.GetValue(), original.GetValue());
    EXPECT_EQ(assigned.GetValue()->GetString(), "m");
    EXPECT_EQ(assigned.GetDisplayValue(), "male");
}

TEST(ScoreValueLabel, StaysWhole_WhenAssignedToItself) {
    ScoreValueLabel label = Label("m", "male");
    const ScoreValueLabel& same = label;
    label = same;

    EXPECT_EQ(label.GetValue()->GetString(), "m");
    EXPECT_EQ(label.GetDisplayValue(), "male");
}

TEST(ScoreValueLabel, DeletesItsValue) {
    bool destroyed = false;
    { const ScoreValueLabel label(std::make_unique<DeathWatch<StringValue>>(destroyed, "m"), ""); }

    EXPECT_TRUE(destroyed);
}

TEST(ScoreValueLabel, CopiesAnEmptiedLabel) {
    ScoreValueLabel emptied = Label("m", "male");
    const ScoreValueLabel taken = std::move(emptied);
    const ScoreValueLabel copy = emptied;  // NOLINT(bugprone-use-after-move): being empty is what is tested.

    EXPECT_EQ(copy.GetValue(), nullptr);
    EXPECT_EQ(taken.GetValue()->GetString(), "m");
}

TEST(ScoreValueLabelSet, KeepsTheOrderOfDeclaration) {
    ScoreValueLabelSet labels;
    EXPECT_TRUE(labels.GetValueLabels().empty());
    labels.AddLabel(Label("z", ""));
    labels.AddLabel(Label("a", "first letter"));

    ASSERT_EQ(labels.GetValueLabels().size(), 2U);
    EXPECT_EQ(labels.GetValueLabels()[0].GetValue()->GetString(), "z");
    EXPECT_EQ(labels.GetValueLabels()[1].GetValue()->GetString(), "a");
    EXPECT_EQ(labels.GetValueLabels()[1].GetDisplayValue(), "first letter");
}

TEST(ScoreValueLabelSet, LeavesValuesWhereTheyAre_WhenItGrows) {
    ScoreValueLabelSet labels;
    labels.AddLabel(Label("first", ""));
    const ScoreValue* const first = labels.GetValueLabels()[0].GetValue();
    for (int more = 0; more < 1000; ++more)
        labels.AddLabel(Label("more", ""));

    EXPECT_EQ(labels.GetValueLabels()[0].GetValue(), first);
}

}  // namespace

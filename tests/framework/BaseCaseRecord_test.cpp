#include "framework/BaseCaseRecord.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(BaseCaseRecord, HoldsNothing_WhenNew) {
    const BaseCaseRecord record({"age", "color"});

    EXPECT_EQ(record.GetValueByIndex(0), nullptr);
    EXPECT_EQ(record.GetValueByIndex(1), nullptr);
    EXPECT_EQ(record.GetValueByName("age"), nullptr);
    EXPECT_TRUE(record.IsIndexed());
}

TEST(BaseCaseRecord, FindsPositionsByName) {
    const BaseCaseRecord record({"age", "", "color"});

    EXPECT_EQ(record.GetVarIndex("age"), 0);
    EXPECT_EQ(record.GetVarIndex(""), 1);
    EXPECT_EQ(record.GetVarIndex("color"), 2);
    EXPECT_EQ(record.GetVarIndex("Age"), -1);
}

TEST(BaseCaseRecord, FindsTheFirst_WhenNamesAreEqual) {
    BaseCaseRecord record({"x", "same", "same"});
    record.SetNumber(1, 10.0);
    record.SetNumber(2, 20.0);

    EXPECT_EQ(record.GetVarIndex("same"), 1);
    EXPECT_EQ(record.GetValueByName("same")->GetDouble(), 10.0);
    EXPECT_EQ(record.GetValueByIndex(2)->GetDouble(), 20.0);
}

TEST(BaseCaseRecord, GivesWhatWasSet) {
    BaseCaseRecord record({"age", "color"});
    record.SetNumber(0, 41.5);
    record.SetText(1, "red");

    EXPECT_EQ(record.GetValueByIndex(0)->GetType(), ScoreValue::Numeric);
    EXPECT_EQ(record.GetValueByIndex(0)->GetDouble(), 41.5);
    EXPECT_EQ(record.GetValueByName("color")->GetType(), ScoreValue::String);
    EXPECT_EQ(record.GetValueByName("color")->GetString(), "red");
    EXPECT_EQ(record.GetValueByIndex(1), record.GetValueByName("color"));
}

TEST(BaseCaseRecord, ChangesKind_WhenFilledAgain) {
    BaseCaseRecord record({"x"});
    record.SetNumber(0, 1.0);
    record.SetText(0, "one");
    EXPECT_EQ(record.GetValueByIndex(0)->GetString(), "one");

    record.SetNumber(0, 2.0);
    EXPECT_EQ(record.GetValueByIndex(0)->GetType(), ScoreValue::Numeric);
    EXPECT_EQ(record.GetValueByIndex(0)->GetDouble(), 2.0);
}

TEST(BaseCaseRecord, ReusesItsValues_WhenFilledAgain) {
    BaseCaseRecord record({"x"});
    record.SetNumber(0, 1.0);
    const ScoreValue* const first = record.GetValueByIndex(0);
    record.SetAbsent(0);
    record.SetNumber(0, 2.0);

    EXPECT_EQ(record.GetValueByIndex(0), first);
}

TEST(BaseCaseRecord, ForgetsOneValue_WhenSetAbsent) {
    BaseCaseRecord record({"x", "y"});
    record.SetNumber(0, 1.0);
    record.SetNumber(1, 2.0);
    record.SetAbsent(0);

    EXPECT_EQ(record.GetValueByIndex(0), nullptr);
    EXPECT_EQ(record.GetValueByName("x"), nullptr);
    EXPECT_EQ(record.GetValueByIndex(1)->GetDouble(), 2.0);
}

TEST(BaseCaseRecord, ForgetsAllValues_WhenAllAreSetAbsent) {
    BaseCaseRecord record({"x", "y"});
    record.SetNumber(0, 1.0);
    record.SetText(1, "a");
    record.SetAllAbsent();

    EXPECT_EQ(record.GetValueByIndex(0), nullptr);
    EXPECT_EQ(record.GetValueByIndex(1), nullptr);
}

TEST(BaseCaseRecord, KeepsSystemMissingAsAValue) {
    BaseCaseRecord record({"x"});
    record.SetNumber(0, NumericValue::GetSysmisValue());

    ASSERT_NE(record.GetValueByIndex(0), nullptr);
    EXPECT_TRUE(record.GetValueByIndex(0)->IsSystemMissingValue());
}

TEST(BaseCaseRecord, GivesNull_WhenThePositionIsOutside) {
    BaseCaseRecord record({"x"});
    record.SetNumber(0, 1.0);

    EXPECT_EQ(record.GetValueByIndex(-1), nullptr);
    EXPECT_EQ(record.GetValueByIndex(1), nullptr);
    EXPECT_EQ(record.GetValueByIndex(std::numeric_limits<int>::min()), nullptr);
    EXPECT_EQ(record.GetValueByIndex(std::numeric_limits<int>::max()), nullptr);
    EXPECT_EQ(record.GetValueByName("unknown"), nullptr);
}

TEST(BaseCaseRecordDeathTest, StopsTheProcess_WhenSettingOutside) {
    BaseCaseRecord record({"x"});

    EXPECT_DEATH(record.SetNumber(1, 1.0), "");
    EXPECT_DEATH(record.SetNumber(-1, 1.0), "");
    EXPECT_DEATH(record.SetText(1, "a"), "");
    EXPECT_DEATH(record.SetText(-1, "a"), "");
    EXPECT_DEATH(record.SetAbsent(1), "");
    EXPECT_DEATH(record.SetAbsent(-1), "");
}

}  // namespace

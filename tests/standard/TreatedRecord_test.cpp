#include "standard/TreatedRecord.h"

#include <gtest/gtest.h>

#include "StandardParts.h"

namespace nbscore::test {
namespace {

class TreatedRecords : public ::testing::Test {
protected:
    TreatedRecords() {
        fields.Set(*size, FieldTreatment(*size, MissingIs(7.0)));
        fields.Require(*colour);
    }

    std::unique_ptr<BaseDictVar> size = NumberVariable("size", {});
    std::unique_ptr<BaseDictVar> colour = TextVariable("colour", {"red"});
    TreatedFields fields;
    TreatedRecord treated;
};

TEST_F(TreatedRecords, HaveTreatedValues_ByNameAndByPosition) {
    const NamedRecord record = CaseOf({{"colour", "red"}, {"other", "o"}});
    EXPECT_EQ(treated.Fill(fields, record, false), nullptr);
    EXPECT_TRUE(treated.IsIndexed());
    EXPECT_EQ(treated.GetVarIndex("size"), 0);
    EXPECT_EQ(treated.GetVarIndex("colour"), 1);
    EXPECT_EQ(treated.GetVarIndex("other"), -1);
    EXPECT_EQ(treated.GetValueByIndex(0)->GetDouble(), 7.0);
    EXPECT_EQ(treated.GetValueByName("size")->GetDouble(), 7.0);
    EXPECT_EQ(treated.GetValueByIndex(1)->GetString(), "red");
    EXPECT_EQ(treated.GetValueByIndex(-1), nullptr);
    EXPECT_EQ(treated.GetValueByIndex(2), nullptr);
}

TEST_F(TreatedRecords, GiveOtherValuesAsTheCaseHasThem) {
    const NamedRecord record = CaseOf({{"other", "o"}});
    treated.Fill(fields, record, false);
    EXPECT_EQ(treated.GetValueByName("other"), record.GetValueByName("other"));
    EXPECT_EQ(treated.GetValueByName("none"), nullptr);
}

TEST_F(TreatedRecords, HaveNoValue_WhenItIsMissing) {
    const NamedRecord first = CaseOf({{"colour", "red"}});
    const NamedRecord second = CaseOf({});
    treated.Fill(fields, first, false);
    treated.Fill(fields, second, false);
    EXPECT_EQ(treated.GetValueByName("colour"), nullptr);
    EXPECT_EQ(treated.GetValueByIndex(1), nullptr);
}

TEST_F(TreatedRecords, TellTheFirstInvalidField) {
    const NamedRecord record = CaseOf({{"size", "large"}, {"colour", "green"}});
    const auto* invalid = treated.Fill(fields, record, false);
    ASSERT_NE(invalid, nullptr);
    EXPECT_EQ(invalid->name, "size");
    EXPECT_EQ(invalid->var, size.get());
}

TEST_F(TreatedRecords, HaveTheOtherValues_WhenOneIsInvalid) {
    for (const auto& name : {"size", "colour"}) {
        const bool sizeIsInvalid = name == std::string("size");
        const NamedRecord record =
            CaseOf({{"size", sizeIsInvalid ? "large" : "3"}, {"colour", sizeIsInvalid ? "red" : "green"}});
        EXPECT_EQ(treated.Fill(fields, record, false)->name, name);
        EXPECT_EQ(treated.GetValueByName(name), nullptr);
        EXPECT_NE(treated.GetValueByName(sizeIsInvalid ? "colour" : "size"), nullptr);
    }
}

TEST_F(TreatedRecords, ReadByNotedPositions) {
    BaseCaseRecord record({"a", "colour", "size"});
    record.SetText(1, "red");
    record.SetNumber(2, 3.0);
    fields.NotePositions(record);
    treated.Fill(fields, record, true);
    EXPECT_EQ(treated.GetValueByIndex(0)->GetDouble(), 3.0);
    EXPECT_EQ(treated.GetValueByIndex(1)->GetString(), "red");
}

TEST_F(TreatedRecords, KeepAFieldsPlace_WhenItsTreatmentIsSetAgain) {
    EXPECT_EQ(fields.Set(*size, FieldTreatment(*size, MissingIs(8.0))), 0U);
    EXPECT_EQ(fields.Require(*size), 0U);
    EXPECT_EQ(fields.GetAll().size(), 2U);
    const NamedRecord record = CaseOf({});
    treated.Fill(fields, record, false);
    EXPECT_EQ(treated.GetValueByIndex(0)->GetDouble(), 8.0);
}

}  // namespace
}  // namespace nbscore::test

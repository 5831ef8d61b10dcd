#include "table/CaseBinder.h"

#include <gtest/gtest.h>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"
#include "output/HostError.h"
#include "support/FakeModel.h"
#include "support/Message.h"

namespace nbscore::test {
namespace {

using Cells = std::vector<std::string_view>;

/// Derived fields that nobody computes: their presence is what counts here.
class NoDerivedFields : public TransformationDictionary {
public:
    void SetUpDerivedCaseRecord() override {}
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord*, const ScoreDictionary*) override {
        return nullptr;
    }
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override { vars.clear(); }
    ScoreDictVar* GetVar(const std::string&) const override { return nullptr; }
};

/// Derived fields that tell what they are computed from: "level" from the weight and "ratio", which reads the height
/// and the target, and "idle", which no input uses, from the width.
class TellingDerivedFields : public NoDerivedFields, public DerivedFieldSources {
public:
    ScoreDictVar* GetVar(const std::string& name) const override {
        return GetFieldsRead(name).empty() ? nullptr : variable.get();
    }
    std::vector<std::string> GetFieldsRead(const std::string& derivedField) const override {
        if (derivedField == "level") return {"weight", "ratio"};
        if (derivedField == "ratio") return {"height", "survived"};
        if (derivedField == "idle") return {"width"};
        return {};
    }

private:
    std::unique_ptr<ScoreDictVar> variable = MakeNumberField("any");
};

/// A model that tells its inputs.
class DescribedModel : public FakeModel, public ModelSelfDescription {
public:
    explicit DescribedModel(std::vector<std::string> namesOfInputs = {"age", "level"})
        : inputs(std::move(namesOfInputs)) {}
    ModelDescription Describe() const override {
        ModelDescription description;
        for (const std::string& name : inputs)
            description.classifiers.emplace_back().inputs.emplace_back().name = name;
        return description;
    }

private:
    std::vector<std::string> inputs;
};

class CaseBinderTest : public testing::Test {
protected:
    CaseBinderTest() {
        auto age = MakeNumberField("age");
        age->AddMissingValue(std::make_unique<StringValue>("NA"));
        age->AddMissingValue(std::make_unique<NumericValue>(-1.0));
        model.AddField(std::move(age), ScoreModel::PredictorRole);
        model.AddField(MakeTextField("sex"), ScoreModel::PredictorRole);
        model.AddField(MakeTextField("survived", {"no", "yes"}), ScoreModel::TargetRole);
        model.AddField(MakeNumberField("weight"), ScoreModel::NoRole);
    }

    CaseBinder Bind(const std::vector<std::string>& header) { return {model, header, "t.csv", options}; }
    std::string GetHeaderFault(const std::vector<std::string>& header) {
        return GetMessageOf<CaseDataError>([this, &header] { Bind(header); });
    }

    FakeModel model;
    CaseBinderOptions options;
};

double GetNumber(const ScoreCaseRecord& record, const std::string& name) {
    const ScoreValue* const value = record.GetValueByName(name);
    if (value == nullptr || value->GetType() != ScoreValue::Numeric) {
        ADD_FAILURE() << name << " is no number";
        return 0.0;
    }
    return value->GetDouble();
}

std::string GetText(const ScoreCaseRecord& record, const std::string& name) {
    const ScoreValue* const value = record.GetValueByName(name);
    if (value == nullptr || value->GetType() != ScoreValue::String) {
        ADD_FAILURE() << name << " is no text";
        return {};
    }
    return value->GetString();
}

TEST_F(CaseBinderTest, NeededCellsAreBound_WhateverTheOrderOfColumns) {
    CaseBinder binder = Bind({"survived", "sex", "other", "age"});
    const ScoreCaseRecord& record = binder.Bind(Cells{"yes", "f", "x", "12.5"}, 2);
    EXPECT_TRUE(record.IsIndexed());
    EXPECT_EQ(GetNumber(record, "age"), 12.5);
    EXPECT_EQ(GetText(record, "sex"), "f");
    EXPECT_EQ(record.GetVarIndex("survived"), -1);
    EXPECT_EQ(record.GetVarIndex("other"), -1);
    EXPECT_EQ(record.GetVarIndex("weight"), -1);
}

TEST_F(CaseBinderTest, NothingOfTheRowBeforeIsLeft_WhenCellsAreEmpty) {
    CaseBinder binder = Bind({"age", "sex"});
    binder.Bind(Cells{"1", "m"}, 2);
    const ScoreCaseRecord& record = binder.Bind(Cells{"", ""}, 3);
    EXPECT_EQ(record.GetValueByName("age"), nullptr);
    EXPECT_EQ(record.GetValueByName("sex"), nullptr);
}

TEST_F(CaseBinderTest, OnlyTheCellsOfASparseRowAreSet) {
    CaseBinder binder = Bind({"survived", "sex", "other", "age"});
    const ScoreCaseRecord& record = binder.BindSparse({{3, "12.5"}, {2, "x"}, {0, "yes"}}, 2);
    EXPECT_EQ(GetNumber(record, "age"), 12.5);
    EXPECT_EQ(record.GetValueByName("sex"), nullptr);
    binder.BindSparse({{1, "m"}, {1, "f"}}, 3);
    EXPECT_EQ(record.GetValueByName("age"), nullptr);
    EXPECT_EQ(GetText(record, "sex"), "f");
    EXPECT_THROW(binder.BindSparse({{1, "m"}, {3, "old"}}, 4), CaseDataError);
    binder.BindSparse({}, 5);
    EXPECT_EQ(record.GetValueByName("sex"), nullptr);
}

TEST_F(CaseBinderTest, TextIsTakenAsItStands_WhenTheFieldHoldsTexts) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(GetText(binder.Bind(Cells{"1", " 007 "}, 2), "sex"), " 007 ");
}

TEST_F(CaseBinderTest, NumberIsRead_WhenBlanksStandAroundIt) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(GetNumber(binder.Bind(Cells{" 1e2 ", "m"}, 2), "age"), 100.0);
}

TEST_F(CaseBinderTest, RowIsRefusedWithPlaceAndText_WhenANumberIsNone) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(GetMessageOf<CaseDataError>([&binder] {
                  binder.Bind(Cells{"12y", "m"}, 7);
              }),
              "t.csv:7: column \"age\": \"12y\" is no number");
    for (const char* text : {" ", "nan", "inf", "0x10", "1e999", "1,5"}) {
        EXPECT_THROW(binder.Bind(Cells{text, "m"}, 7), CaseDataError) << text;
    }
}

TEST_F(CaseBinderTest, TextInTheMessageIsShort_WhenTheCellIsLong) {
    CaseBinder binder = Bind({"age", "sex"});
    std::string text = std::string(79, 'x') + "\xC3\xA4" + std::string(5000, 'y');
    EXPECT_EQ(GetMessageOf<CaseDataError>([&binder, &text] {
                  binder.Bind(Cells{text, "m"}, 2);
              }),
              "t.csv:2: column \"age\": \"" + std::string(79, 'x') + "...\" is no number");
    text = "a\n\x1B[31mb";
    EXPECT_EQ(GetMessageOf<CaseDataError>([&binder, &text] {
                  binder.Bind(Cells{text, "m"}, 2);
              }),
              "t.csv:2: column \"age\": \"a??[31mb\" is no number");
}

TEST_F(CaseBinderTest, ValueIsAbsent_WhenBadValuesAreToBeMissing) {
    options.badValues = BadValues::Missing;
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(binder.Bind(Cells{"12y", "m"}, 2).GetValueByName("age"), nullptr);
}

TEST_F(CaseBinderTest, ValueIsAbsent_WhenItsTextIsDeclaredMissing) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(binder.Bind(Cells{"NA", "m"}, 2).GetValueByName("age"), nullptr);
    EXPECT_THROW(binder.Bind(Cells{"na", "m"}, 2), CaseDataError);
}

TEST_F(CaseBinderTest, NumberStaysForTheModelToJudge_WhenItIsDeclaredMissing) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(GetNumber(binder.Bind(Cells{"-1", "m"}, 2), "age"), -1.0);
}

TEST_F(CaseBinderTest, RowIsRefusedWithBothNumbers_WhenItHasTooManyOrTooFewCells) {
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(GetMessageOf<CaseDataError>([&binder] {
                  binder.Bind(Cells{"1", "m", "x"}, 5);
              }),
              "t.csv:5: the row has 3 cells, the header has 2");
    EXPECT_EQ(GetMessageOf<CaseDataError>([&binder] { binder.Bind(Cells{""}, 6); }),
              "t.csv:6: the row has 1 cell, the header has 2");
}

TEST_F(CaseBinderTest, ADelimiterIsSuggested_WhereTheHeaderHasTheColumnBetweenOtherCharacters) {
    const auto hintAt = [this](const std::vector<std::string>& header) {
        const std::string fault = GetHeaderFault(header);
        const std::size_t end = fault.find(", which the model needs");
        return fault.substr(std::min(end, fault.size()));
    };
    const std::string hint = ", which the model needs; its columns seem to stand between ";
    EXPECT_EQ(hintAt({"id;age;sex"}), hint + "semicolons: try --delimiter \";\"");
    EXPECT_EQ(hintAt({"id;\"age\";sex"}), hint + "semicolons: try --delimiter \";\"");
    EXPECT_EQ(hintAt({"age\tsex"}), hint + "tabs: try --delimiter tab");
    EXPECT_EQ(hintAt({"age,sex"}), hint + "commas: try --delimiter \",\"");
    EXPECT_EQ(hintAt({"a;b", "age;c"}), hint + "semicolons: try --delimiter \";\"");
    EXPECT_EQ(hintAt({"ages;sex"}), ", which the model needs");
    EXPECT_EQ(hintAt({"a;b"}), ", which the model needs");
}

TEST_F(CaseBinderTest, HeaderIsRefused_WhenANameComesTwice) {
    EXPECT_EQ(GetHeaderFault({"age", "x", "sex", "x"}), "t.csv:1: the header has two columns named \"x\"");
    EXPECT_EQ(GetHeaderFault({"", "age", "sex", ""}), "t.csv:1: the header has two columns without a name");
}

TEST_F(CaseBinderTest, HeaderIsTaken_WhenOneColumnHasNoName) {
    CaseBinder binder = Bind({"", "age", "sex"});
    EXPECT_EQ(GetNumber(binder.Bind(Cells{"7", "1", "m"}, 2), "age"), 1.0);
}

TEST_F(CaseBinderTest, HeaderIsRefusedWithEveryName_WhenNeededFieldsLack) {
    EXPECT_EQ(GetHeaderFault({"age"}), "t.csv:1: the header lacks the column \"sex\", which the model needs");
    EXPECT_EQ(GetHeaderFault({"Age", " sex"}),
              "t.csv:1: the header lacks the columns \"age\", \"sex\", which the model needs");
}

TEST_F(CaseBinderTest, ListOfNamesIsShort_WhenManyFieldsLack) {
    for (int i = 0; i < 20; ++i) {
        model.AddField(MakeNumberField("f" + std::to_string(i)), ScoreModel::PredictorRole);
    }
    EXPECT_EQ(GetHeaderFault({"age", "sex"}),
              "t.csv:1: the header lacks the columns \"f0\", \"f1\", \"f2\", \"f3\", \"f4\", \"f5\", \"f6\", \"f7\", "
              "\"f8\", \"f9\" and 10 more, which the model needs");
}

TEST_F(CaseBinderTest, FieldIsAbsentInEveryCase_WhenItMayLack) {
    options.allowMissingFields = true;
    CaseBinder binder = Bind({"age"});
    const ScoreCaseRecord& record = binder.Bind(Cells{"3"}, 2);
    EXPECT_EQ(GetNumber(record, "age"), 3.0);
    EXPECT_EQ(record.GetValueByName("sex"), nullptr);
}

TEST_F(CaseBinderTest, OtherFieldsAreBound_WhenThereAreDerivedFieldsToComputeFromThem) {
    model.SetTransformationScoreDictionary(new NoDerivedFields);
    CaseBinder binder = Bind({"weight", "survived", "age", "sex"});
    const ScoreCaseRecord& record = binder.Bind(Cells{"80", "yes", "3", "m"}, 2);
    EXPECT_EQ(GetNumber(record, "weight"), 80.0);
    EXPECT_EQ(GetText(record, "survived"), "yes");
    EXPECT_THROW(binder.Bind(Cells{"heavy", "yes", "3", "m"}, 3), CaseDataError);
}

TEST_F(CaseBinderTest, OtherFieldsMayLack_WhenThereAreDerivedFields) {
    model.SetTransformationScoreDictionary(new NoDerivedFields);
    CaseBinder binder = Bind({"age", "sex"});
    EXPECT_EQ(binder.Bind(Cells{"3", "m"}, 2).GetVarIndex("weight"), -1);
}

class DerivedInputs : public testing::Test {
protected:
    DerivedInputs() {
        model.AddField(MakeNumberField("height"), ScoreModel::NoRole);
        model.AddField(MakeNumberField("width"), ScoreModel::NoRole);
        model.AddField(MakeNumberField("weight"), ScoreModel::NoRole);
        model.AddField(MakeTextField("survived", {"no", "yes"}), ScoreModel::TargetRole);
        model.AddField(MakeNumberField("age"), ScoreModel::PredictorRole);
        model.SetTransformationScoreDictionary(new TellingDerivedFields);
    }

    std::string GetHeaderFault(const std::vector<std::string>& header) {
        return GetMessageOf<CaseDataError>([this, &header] { CaseBinder(model, header, "t.csv", {}); });
    }

    DescribedModel model;
};

TEST_F(DerivedInputs, NeedWhatTheyAreComputedFrom) {
    EXPECT_EQ(GetHeaderFault({"age", "weight"}),
              "t.csv:1: the header lacks the column \"height\", which the model needs");
    EXPECT_EQ(GetHeaderFault({"Age"}),
              "t.csv:1: the header lacks the columns \"age\", \"height\", \"weight\", which the model needs");
}

TEST_F(DerivedInputs, AreMissingInEveryCase_WhenWhatTheyNeedMayLack) {
    CaseBinder binder(model, {"age", "weight"}, "t.csv", {.badValues = BadValues::Stop, .allowMissingFields = true});
    const ScoreCaseRecord& record = binder.Bind(Cells{"1", "80"}, 2);
    EXPECT_EQ(GetNumber(record, "weight"), 80.0);
    EXPECT_EQ(record.GetValueByName("height"), nullptr);
}

TEST_F(DerivedInputs, LeaveColumnsAlone_ThatNoneOfThemIsComputedFrom) {
    CaseBinder binder(model, {"width", "survived", "age", "weight", "height"}, "t.csv", {});
    const ScoreCaseRecord& record = binder.Bind(Cells{"wide", "yes", "1", "80", "2"}, 2);
    EXPECT_EQ(GetNumber(record, "height"), 2.0);
    EXPECT_EQ(record.GetVarIndex("width"), -1);
}

TEST_F(DerivedInputs, FindTheTarget_WhereTheyReadItAndTheTableHasIt) {
    CaseBinder binder(model, {"survived", "age", "weight", "height"}, "t.csv", {});
    const ScoreCaseRecord& record = binder.Bind(Cells{"yes", "1", "80", "2"}, 2);
    EXPECT_EQ(GetText(record, "survived"), "yes");
    CaseBinder without(model, {"age", "weight", "height"}, "t.csv", {});
    EXPECT_EQ(without.Bind(Cells{"1", "80", "2"}, 2).GetValueByName("survived"), nullptr);
}

/// Two inputs of which one is the target itself.
class TargetAmongInputs : public testing::Test {
protected:
    TargetAmongInputs() {
        model.AddField(MakeTextField("survived", {"no", "yes"}), ScoreModel::TargetRole);
        model.AddField(MakeNumberField("age"), ScoreModel::PredictorRole);
    }

    DescribedModel model{{"age", "survived"}};
};

TEST_F(TargetAmongInputs, IsRead_WhereTheTableHasIt) {
    CaseBinder binder(model, {"survived", "age"}, "t.csv", {});
    EXPECT_EQ(GetText(binder.Bind(Cells{"yes", "1"}, 2), "survived"), "yes");
    EXPECT_EQ(GetText(binder.BindSparse({{0, "no"}}, 3), "survived"), "no");
}

TEST_F(TargetAmongInputs, IsNeverNeeded) {
    CaseBinder binder(model, {"age"}, "t.csv", {});
    EXPECT_EQ(binder.Bind(Cells{"1"}, 2).GetValueByName("survived"), nullptr);
    EXPECT_EQ(GetMessageOf<CaseDataError>([this] { CaseBinder(model, {"survived"}, "t.csv", {}); }),
              "t.csv:1: the header lacks the column \"age\", which the model needs");
}

// Models keep no position of their target: by position they would not find it.
TEST_F(TargetAmongInputs, IsReadByName) {
    CaseBinder binder(model, {"survived", "age"}, "t.csv", {});
    EXPECT_FALSE(binder.Bind(Cells{"yes", "1"}, 2).IsIndexed());
    const DescribedModel other({"age"});
    EXPECT_TRUE(CaseBinder(other, {"survived"}, "t.csv", {}).Bind(Cells{"yes"}, 2).IsIndexed());
}

TEST(CaseBinder, RecordIsEmpty_WhenTheModelNeedsNothing) {
    FakeModel model;
    model.AddField(MakeTextField("y", {"a"}), ScoreModel::TargetRole);
    CaseBinder binder(model, {"x"}, "t.csv", {});
    EXPECT_EQ(binder.Bind(Cells{"1"}, 2).GetValueByIndex(0), nullptr);
}

}  // namespace
}  // namespace nbscore::test

#include "translator/ElementReaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "translator/ReadWith.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string inputPath = "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]";

std::string PairCounts(const std::string& value, const std::string& yes, const std::string& no) {
    return "\n<PairCounts value=\"" + value + "\"><TargetValueCounts><TargetValueCount value=\"yes\" count=\"" + yes +
           "\"/><TargetValueCount value=\"no\" count=\"" + no + "\"/></TargetValueCounts></PairCounts>";
}

std::string Input(const std::string& field, const std::string& children) {
    return "\n<BayesInput fieldName=\"" + field + "\">" + children + "\n</BayesInput>";
}

/// Two bins, up to 20 and above.
const std::string bins = R"(
    <DerivedField name="bins" optype="categorical"><Discretize field="temperature">
        <DiscretizeBin binValue="cold"><Interval closure="openClosed" rightMargin="20"/></DiscretizeBin>
        <DiscretizeBin binValue="warm"><Interval closure="openOpen" leftMargin="20"/></DiscretizeBin>
    </Discretize></DerivedField>)";

TestDocument WithInputs(const std::string& bayesInputs) {
    TestDocument document;
    document.bayesInputs = bayesInputs;
    return document;
}

std::string DumpOfInputs(const std::string& bayesInputs) {
    const ParseOutcome outcome = Parse(WithInputs(bayesInputs).Text());
    if (outcome.refusal) return "refused: " + outcome.refusal->GetMessage();
    return DumpOf(*outcome.model);
}

testing::AssertionResult InputsAreRefusedAs(const std::string& bayesInputs, const ExpectedRefusal& expected) {
    const std::string text = WithInputs(bayesInputs).Text();
    return IsRefusedAs(Parse(text), text, expected);
}

TEST(BayesInputReader, ReadsACategoricalInput) {
    const std::string dump =
        DumpOfInputs(Input("outlook", PairCounts("rain", "2", "4") + PairCounts("sunny", "3", "1")));
    EXPECT_THAT(dump, HasSubstr(TableDump(0.5, {{3, 1}, {2, 4}})));
    EXPECT_THAT(dump, HasSubstr(DumpOf(NBCatStringEncoder(std::vector<std::string>{"sunny", "rain"}))));
}

TEST(BayesInputReader, ReadsABinnedInput_WhenPairCountsCarryBinNumbers) {
    const std::string dump =
        DumpOfInputs(Input("temperature", bins + PairCounts("1", "5", "6") + PairCounts("0", "7", "8")));
    EXPECT_THAT(dump, HasSubstr(TableDump(0.5, {{7, 8}, {5, 6}})));
    EXPECT_THAT(dump, HasSubstr(DumpOf(NBinningEncoder({20}))));
}

TEST(BayesInputReader, ReadsAnOrdinalInputAsACategoricalOne) {
    TestDocument document = WithInputs(Input("size", PairCounts("2.0", "3", "1")));
    document.dataFields +=
        R"(<DataField name="size" optype="ordinal" dataType="integer"><Value value="1"/><Value value="2"/></DataField>)";
    document.miningSchema += R"(<MiningField name="size"/>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(TableDump(0.5, {{}, {3, 1}})));
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(DumpOf(NBCatNumericEncoder(std::vector<double>{1, 2}))));
}

TEST(BayesInputReader, LeavesARowEmpty_WhenADeclaredValueIsNeverCounted) {
    RecordingModel model;
    ASSERT_FALSE(ReadWith(model, WithInputs(Input("outlook", PairCounts("rain", "2", "4"))).Text()).refusal);
    EXPECT_THAT(model.matrices, ElementsAre(ElementsAre(ElementsAre(), ElementsAre(2, 4))));
}

TEST(BayesInputReader, KeepsAZero_WhenATargetValueIsUnknown) {
    EXPECT_THAT(DumpOfInputs(Input("outlook", R"(<PairCounts value="rain"><TargetValueCounts>
        <TargetValueCount value="perhaps" count="9"/><TargetValueCount value="no" count="4"/></TargetValueCounts></PairCounts>)")),
                HasSubstr(TableDump(0.5, {{}, {0, 4}})));
}

TEST(BayesInputReader, TakesTheLastRow_WhenAValueIsRepeated) {
    EXPECT_THAT(DumpOfInputs(Input("outlook", PairCounts("rain", "9", "9") + PairCounts("rain", "2", "4"))),
                HasSubstr(TableDump(0.5, {{}, {2, 4}})));
}

TEST(BayesInputReader, LearnsTheValues_WhenTheVariableDeclaresNone) {
    TestDocument document = WithInputs(
        Input("mood", PairCounts("good", "1", "2") + PairCounts("bad", "3", "4") + PairCounts("good", "5", "6")));
    document.dataFields += R"(<DataField name="mood" optype="categorical" dataType="string"/>)";
    document.miningSchema += R"(<MiningField name="mood"/>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(TableDump(0.5, {{5, 6}, {3, 4}})));
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(DumpOf(NBCatStringEncoder(std::vector<std::string>{"good", "bad"}))));
}

TEST(BayesInputReader, LearnsTheTargetCategories_WhenTheTargetDeclaresNone) {
    TestDocument document = WithInputs(Input("outlook", R"(
        <PairCounts value="sunny"><TargetValueCounts><TargetValueCount value="no" count="4"/></TargetValueCounts></PairCounts>)" +
                                                            PairCounts("rain", "1", "2")));
    document.dataFields = R"(<DataField name="outlook" optype="categorical" dataType="string">
            <Value value="sunny"/><Value value="rain"/></DataField>
        <DataField name="temperature" optype="continuous" dataType="double"/>
        <DataField name="play" optype="categorical" dataType="string"/>)";
    RecordingModel model;
    ASSERT_FALSE(ReadWith(model, document.Text()).refusal);
    // The first row was read before "yes" was learned; count tables make all rows equally long.
    EXPECT_THAT(model.matrices, ElementsAre(ElementsAre(ElementsAre(4), ElementsAre(2, 1))));
    EXPECT_THAT(model.targetCounts, ElementsAre(5, 5));
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(TableDump(0.5, {{4, 0}, {2, 1}})));
}

TEST(BayesInputReader, MakesTwoPredictors_WhenAFieldIsReadTwice) {
    const std::string dump =
        DumpOfInputs(Input("outlook", PairCounts("sunny", "3", "1")) + Input("outlook", PairCounts("rain", "2", "4")));
    EXPECT_THAT(dump, HasSubstr("Input variable names: outlook outlook \n"));
    EXPECT_THAT(dump, HasSubstr(TableDump(0.5, {{3, 1}, {}})));
    EXPECT_THAT(dump, HasSubstr(TableDump(0.5, {{}, {2, 4}})));
}

TEST(BayesInputReader, CallsTheModelInOrder) {
    RecordingModel model;
    const TestDocument document = WithInputs(Input("temperature", bins + PairCounts("0", "7", "8")) + "<Extension/>" +
                                             Input("outlook", PairCounts("sunny", "3", "1")));
    ASSERT_FALSE(ReadWith(model, document.Text()).refusal);
    EXPECT_THAT(model.calls, ElementsAre("model 0", "threshold", "target play", "var temperature temperature",
                                         "encoder 1", "counts 1", "var outlook outlook", "encoder 0", "counts 0",
                                         "target counts", "finish play"));
}

TEST(BayesInputReader, NumbersInputsAnewInEachModelElement) {
    RecordingModel model;
    const TestDocument document;
    TestDocument second;
    second.miningSchema = R"(<MiningField name="temperature"/><MiningField name="play" usageType="predicted"/>)";
    second.bayesInputs = Input("temperature", bins + PairCounts("0", "7", "8"));
    ASSERT_FALSE(ReadWith(model, document.TextWith(document.Model() + second.Model())).refusal);
    EXPECT_THAT(model.calls,
                ElementsAre("model 0", "threshold", "target play", "var outlook outlook", "encoder 0", "counts 0",
                            "target counts", "model 1", "threshold", "var temperature temperature", "encoder 0",
                            "counts 0", "target counts", "finish play"));
}

TEST(BayesInputReader, SkipsExtensionsBetweenInputs) {
    EXPECT_THAT(DumpOfInputs("<Extension><Nonsense/></Extension>" + Input("outlook", PairCounts("rain", "2", "4"))),
                HasSubstr("Input variable names: outlook \n"));
}

TEST(BayesInputReader, Refuses_WhenAnElementIsNoBayesInput) {
    EXPECT_TRUE(InputsAreRefusedAs(Input("outlook", PairCounts("rain", "2", "4")) + "\n<Input/>",
                                   {12, "Only BayesInput elements are allowed here.", "<Input/>",
                                    "/PMML/NaiveBayesModel[1]/BayesInputs[1]/Input[1]"}));
}

TEST(BayesInputReader, Refuses_WhenTheFieldNameIsAbsent) {
    const std::string text = WithInputs("\n<BayesInput/>").Text();
    const ParseOutcome outcome = Parse(text);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 2);
    EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<BayesInput/>"));
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, inputPath);
}

TEST(BayesInputReader, Refuses_WhenTheSchemaDoesNotListTheInput) {
    EXPECT_TRUE(
        InputsAreRefusedAs(Input("nowhere", ""), {7, "Input not found in MiningSchema.", "<BayesInput ", inputPath}));
    EXPECT_TRUE(
        InputsAreRefusedAs(Input("play", ""), {7, "Input not found in MiningSchema.", "<BayesInput ", inputPath}));
}

TEST(BayesInputReader, Refuses_WhenAListedInputIsInNoDictionary) {
    // No document comes here: the mining schema has looked every name up before.
    RecordingModel model;
    const std::string text = WithInputs(Input("ghost", "")).Text();
    const ParseOutcome outcome =
        ReadWith(model, text, [](DocumentReading& reading) { reading.activeFields.Append("ghost"); });
    EXPECT_TRUE(
        IsRefusedAs(outcome, text, {8, "ghostVariable name not found in dictionary.", "<BayesInput ", inputPath}));
    EXPECT_THAT(model.calls, ElementsAre("model 0", "threshold", "target play"));
}

/// Derived fields of a document that has none of any name.
class NoDerivedFields : public TransformationDictionary {
public:
    void SetUpDerivedCaseRecord() override {}
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord*, const ScoreDictionary*) override {
        return nullptr;
    }
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override { vars.clear(); }
    ScoreDictVar* GetVar(const std::string&) const override { return nullptr; }
};

TEST(BayesInputReader, AsksForDerivedValuesEvenThen_WhenTheTransformationsDoNotKnowTheFieldEither) {
    RecordingModel model;
    const NoDerivedFields derivedFields;
    const std::string text = WithInputs(Input("ghost", "")).Text();
    const ParseOutcome outcome = ReadWith(model, text, [&](DocumentReading& reading) {
        reading.activeFields.Append("ghost");
        reading.derivedFields = &derivedFields;
    });
    EXPECT_TRUE(
        IsRefusedAs(outcome, text, {8, "ghostVariable name not found in dictionary.", "<BayesInput ", inputPath}));
    EXPECT_THAT(model.calls, ElementsAre("model 0", "threshold", "target play", "derived needed"));
}

TEST(BayesInputReader, AsksForDerivedValues_WhenOnlyTheTransformationsKnowTheField) {
    TestDocument document = WithInputs(Input("windy", PairCounts("1", "2", "4")));
    document.transformations = R"(<TransformationDictionary>
        <DerivedField name="windy" optype="categorical" dataType="string"><Constant>1</Constant></DerivedField>
    </TransformationDictionary>)";
    document.miningSchema += R"(<Extension extender="scoring.nbscore" name="DerivedFields">
        <MiningField name="windy"/></Extension>)";
    ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_TRUE(dynamic_cast<NaiveBayesModel&>(*outcome.model).NeedDerivedPredictor());
    document.bayesInputs = Input("outlook", PairCounts("rain", "2", "4"));
    outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_FALSE(dynamic_cast<NaiveBayesModel&>(*outcome.model).NeedDerivedPredictor());
}

TEST(BayesInputReader, Refuses_WhenAChildIsNoPairCounts) {
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("outlook", PairCounts("rain", "2", "4") + "\n<Extension/>"),
        {1, "Only PairCounts elements are allowed here.", "<Extension", inputPath + "/Extension[1]"}));
    EXPECT_TRUE(InputsAreRefusedAs(Input("outlook", bins), {1, "Only PairCounts elements are allowed here.",
                                                            "<DerivedField", inputPath + "/DerivedField[1]"}));
}

TEST(BayesInputReader, Refuses_WhenPairCountsHaveNoValue) {
    for (const std::string& input :
         {Input("outlook", "\n<PairCounts/>"), Input("temperature", bins + "\n<PairCounts/>")}) {
        const std::string text = WithInputs(input).Text();
        const ParseOutcome outcome = Parse(text);
        ASSERT_TRUE(outcome.refusal);
        EXPECT_EQ(outcome.refusal->GetCode(), 2);
        EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<PairCounts/>"));
    }
}

TEST(BayesInputReader, Refuses_WhenAValueIsNotDeclared) {
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("outlook", PairCounts("Rain", "2", "4")),
        {7, "Input value not found in DataDictionary.", "<PairCounts value=\"Rain\"", inputPath + "/PairCounts[1]"}));
}

TEST(BayesInputReader, Refuses_WhenABinNumberIsNegative) {
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("temperature", bins + PairCounts("0", "1", "1") + PairCounts("-1", "2", "4")),
        {7, "Input value not found in DataDictionary.", "<PairCounts value=\"-1\"", inputPath + "/PairCounts[2]"}));
}

TEST(BayesInputReader, Refuses_WhenABinNumberIsNoWholeNumber) {
    for (const std::string value : {"1.5", "cold", "", "99999999999"}) {
        const std::string text = WithInputs(Input("temperature", bins + PairCounts(value, "2", "4"))).Text();
        const ParseOutcome outcome = Parse(text);
        ASSERT_TRUE(outcome.refusal) << value;
        EXPECT_EQ(outcome.refusal->GetCode(), 9) << value;
        EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<PairCounts "));
        EXPECT_EQ(outcome.refusal->GetPlace().elementPath, inputPath + "/PairCounts[1]");
    }
}

TEST(BayesInputReader, GrowsTheTable_WhenABinNumberIsBeyondTheBins) {
    EXPECT_THAT(DumpOfInputs(Input("temperature", bins + PairCounts("3", "2", "4"))),
                HasSubstr(TableDump(0.5, {{}, {}, {}, {2, 4}})));
}

TEST(BayesInputReader, TakesABinNumberOfAMillion_AndNoneAbove) {
    RecordingModel model;
    ASSERT_FALSE(
        ReadWith(model, WithInputs(Input("temperature", bins + PairCounts("1000000", "2", "4"))).Text()).refusal);
    EXPECT_EQ(model.matrices[0].size(), 1000001u);
    EXPECT_TRUE(InputsAreRefusedAs(Input("temperature", bins + PairCounts("1000001", "2", "4")),
                                   {12, "Bin number of input 'temperature' 1000001 is above 1000000.", "<PairCounts ",
                                    inputPath + "/PairCounts[1]"}));
}

TEST(BayesInputReader, Refuses_WhenTheTablesWouldTakeTooMuchMemory) {
    // A million rows each, of 2 cells and what a row itself costs; a little goes to the target.
    constexpr std::size_t fitting = 2;
    std::string inputs;
    for (std::size_t i = 0; i <= fitting; ++i)
        inputs += Input("temperature", bins + PairCounts("1000000", "2", "4"));
    RecordingModel model;
    const std::string text = WithInputs(inputs).Text();
    const ParseOutcome outcome =
        ReadWith(model, text, [](DocumentReading& reading) { reading.cells = CountCells(300'000'000, 0); });
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 12);
    EXPECT_EQ(outcome.refusal->GetMessage(),
              "The document's count tables and categories need more memory than max-memory allows: 300000000 bytes.");
    EXPECT_EQ(model.matrices.size(), fitting);
}

TEST(BayesInputReader, Refuses_WhenNeitherValuesNorCountsAreThere) {
    TestDocument document = WithInputs(Input("mood", ""));
    document.dataFields += R"(<DataField name="mood" optype="categorical" dataType="string"/>)";
    document.miningSchema += R"(<MiningField name="mood"/>)";
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {12, "Input 'mood' declares no values and has no PairCounts.", "<BayesInput ", inputPath}));
}

TEST(BayesInputReader, AcceptsAnInputWithoutCounts_WhenItsValuesAreDeclared) {
    EXPECT_THAT(DumpOfInputs(Input("outlook", "")), HasSubstr(TableDump(0.5, {{}, {}})));
    EXPECT_THAT(DumpOfInputs(Input("temperature", bins)), HasSubstr(TableDump(0.5, {{}, {}})));
}

TEST(BayesInputReader, Refuses_WhenAContinuousInputStartsWithPairCounts) {
    testing::internal::CaptureStderr();
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("temperature", PairCounts("0", "2", "4")),
        {6, "Element DerivedField was expected here.", "<PairCounts ", inputPath + "/PairCounts[1]"}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Element DerivedField not found in ParseDiscretize\nThe element is PairCounts\n");
}

TEST(BayesInputReader, Refuses_WhenAContinuousInputIsEmpty) {
    testing::internal::CaptureStderr();
    EXPECT_TRUE(InputsAreRefusedAs(Input("temperature", ""),
                                   {6, "Element DerivedField was expected here.", "<BayesInput ", inputPath}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Element DerivedField not found in ParseDiscretize\nThe element is \n");
}

TEST(BayesInputReader, Refuses_WhenPairCountsHoldNoTargetValueCounts) {
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("outlook", "\n<PairCounts value=\"rain\"/>"),
        {1, "Element <TargetValueCounts> was expected here.", "<PairCounts ", inputPath + "/PairCounts[1]"}));
    EXPECT_TRUE(InputsAreRefusedAs(
        Input("outlook",
              "\n<PairCounts value=\"rain\">\n<TargetValueCounts>\n<Extension/></TargetValueCounts></PairCounts>"),
        {1, "Element <TargetValueCount> was expected here.", "<Extension",
         inputPath + "/PairCounts[1]/TargetValueCounts[1]/Extension[1]"}));
}

TEST(BayesInputReader, IgnoresWhatFollowsTheTargetValueCounts) {
    EXPECT_THAT(DumpOfInputs(Input("outlook", R"(<PairCounts value="rain"><TargetValueCounts>
        <TargetValueCount value="yes" count="2"/></TargetValueCounts><Nonsense/></PairCounts>)")),
                HasSubstr(TableDump(0.5, {{}, {2, 0}})));
}

TEST(BayesInputReader, ScoresACase_FromWhatWasRead) {
    const ParseOutcome outcome = Parse(TestDocument().Text());
    ASSERT_TRUE(outcome.model);
    BaseCaseRecord record({"outlook"});
    record.SetText(0, "sunny");
    // Equal priors; sunny given yes (0.5 + 3) / (2 * 0.5 + 5), given no (0.5 + 1) / (2 * 0.5 + 5).
    EXPECT_THAT(Probabilities(*outcome.model, record),
                ElementsAre(::testing::DoubleEq(3.5 / 5.0), ::testing::DoubleEq(1.5 / 5.0)));
    record.SetText(0, "snow");
    EXPECT_THAT(Probabilities(*outcome.model, record),
                ElementsAre(::testing::DoubleEq(5.5 / 3.0), ::testing::DoubleEq(5.5 / 3.0)));
}

}  // namespace
}  // namespace nbscore::test

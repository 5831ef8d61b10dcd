#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string fieldPath = "/PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField";

TestDocument WithSchema(const std::string& miningSchema) {
    TestDocument document;
    document.miningSchema = miningSchema;
    return document;
}

/// A document with one derived field, "windy", and this in its mining schema beside the usual fields.
TestDocument WithDerivedField(const std::string& inSchema) {
    TestDocument document;
    document.transformations = R"(<TransformationDictionary>
        <DerivedField name="windy" optype="categorical" dataType="string"><Constant>1</Constant></DerivedField>
    </TransformationDictionary>)";
    document.miningSchema += "\n" + inSchema;
    return document;
}

const std::string derivedFieldsExtension =
    R"(<Extension extender="scoring.nbscore" name="DerivedFields"><MiningField name="windy"/></Extension>)";

const std::string windyInput = R"(<BayesInput fieldName="windy">
    <PairCounts value="1"><TargetValueCounts><TargetValueCount value="yes" count="7"/></TargetValueCounts></PairCounts>
    </BayesInput>)";

TEST(MiningSchemaReader, GivesRoles_WhenUsageIsActiveAbsentEmptyOrPredicted) {
    TestDocument document = WithSchema(R"(
        <MiningField name="outlook" usageType="active"/>
        <MiningField name="temperature" usageType=""/>
        <MiningField name="humidity"/>
        <MiningField name="play" usageType="predicted"/>)");
    document.dataFields += R"(<DataField name="humidity" optype="continuous" dataType="double"/>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetVarRole("outlook"), 2);
    EXPECT_EQ(outcome.model->GetVarRole("temperature"), 2);
    EXPECT_EQ(outcome.model->GetVarRole("humidity"), 2);
    EXPECT_EQ(outcome.model->GetVarRole("play"), 1);
    EXPECT_THAT(NamesOfRole(*outcome.model, ScoreModel::TargetRole), ElementsAre("play"));
}

TEST(MiningSchemaReader, GivesNoRole_WhenUsageIsAnyOther) {
    for (const std::string usage : {"supplementary", "target", "Active", "group", "predicted "}) {
        const ParseOutcome outcome = Parse(WithSchema(R"(<MiningField name="outlook"/>
            <MiningField name="play" usageType="predicted"/>
            <MiningField name="temperature" usageType=")" +
                                                      usage + "\"/>")
                                               .Text());
        ASSERT_TRUE(outcome.model) << usage;
        EXPECT_EQ(outcome.model->GetVarRole("temperature"), -1) << usage;
    }
}

TEST(MiningSchemaReader, RefusesTheInput_WhenItsFieldIsSupplementary) {
    const TestDocument document = WithSchema(R"(<MiningField name="outlook" usageType="supplementary"/>
        <MiningField name="play" usageType="predicted"/>)");
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {7, "Input not found in MiningSchema.", "<BayesInput fieldName=\"outlook\"",
                             "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]"}));
}

TEST(MiningSchemaReader, NamesTheTargetWithItsCategories) {
    const ParseOutcome outcome = Parse(TestDocument().Text());
    ASSERT_TRUE(outcome.model);
    ASSERT_NE(outcome.model->GetTargetVar(), nullptr);
    EXPECT_EQ(outcome.model->GetTargetVar()->GetName(), "play");
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target categories: yesno"));
}

TEST(MiningSchemaReader, TakesAnyElementForAMiningField_WhenItIsNoExtension) {
    const ParseOutcome outcome = Parse(WithSchema(R"(<Whatever name="outlook"/>
        <MiningField name="play" usageType="predicted"/>)")
                                           .Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetVarRole("outlook"), 2);
}

TEST(MiningSchemaReader, Refuses_WhenAFieldHasNoName) {
    const TestDocument document = WithSchema("\n<MiningField usageType=\"active\"/>");
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 2);
    EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(document.Text(), "<MiningField usageType"));
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, fieldPath + "[1]");
}

TEST(MiningSchemaReader, Refuses_WhenAFieldIsNotInTheDictionary) {
    for (const std::string usage : {"active", "predicted", "supplementary"}) {
        const TestDocument document = WithSchema(
            "\n<MiningField name=\"outlook\"/>\n<MiningField name=\"nowhere\" usageType=\"" + usage + "\"/>");
        EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                                {5, "nowhere is not defined!", "<MiningField name=\"nowhere\"", fieldPath + "[2]"}));
    }
}

TEST(MiningSchemaReader, Refuses_WhenAnActiveFieldIsListedTwice) {
    for (const std::string usage : {"active", "predicted", "supplementary"}) {
        const TestDocument document = WithSchema(
            "\n<MiningField name=\"outlook\"/>\n<MiningField name=\"outlook\" usageType=\"" + usage + "\"/>");
        EXPECT_TRUE(
            IsRefusedAs(Parse(document.Text()), document.Text(),
                        {1, "outlook is redefined!", "<MiningField name=\"outlook\" usageType", fieldPath + "[2]"}));
    }
}

TEST(MiningSchemaReader, AcceptsASupplementaryFieldListedTwice_BecauseItHasNoRole) {
    EXPECT_TRUE(Parse(WithSchema(R"(<MiningField name="temperature" usageType="supplementary"/>
        <MiningField name="temperature" usageType="supplementary"/><MiningField name="outlook"/>
        <MiningField name="play" usageType="predicted"/>)")
                          .Text())
                    .model);
}

TEST(MiningSchemaReader, RefusesARepeat_WhenItStandsInASecondSchema) {
    TestDocument document;
    document.miningSchema += "\n</MiningSchema>\n<MiningSchema>\n<MiningField name=\"outlook\" usageType=\"active\"/>";
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {1, "outlook is redefined!", "<MiningField name=\"outlook\" usageType",
                             "/PMML/NaiveBayesModel[1]/MiningSchema[2]/MiningField[1]"}));
}

TEST(MiningSchemaReader, ThrowsAPointer_WhenASecondFieldIsPredicted) {
    const TestDocument document = WithSchema(
        "\n<MiningField name=\"play\" usageType=\"predicted\"/>\n<MiningField name=\"outlook\" "
        "usageType=\"predicted\"/>");
    const ParseOutcome outcome = Parse(document.Text());
    EXPECT_TRUE(outcome.thrownAsPointer);
    EXPECT_TRUE(IsRefusedAs(outcome, document.Text(),
                            {12, "Only one target is allowed.", "<MiningField name=\"outlook\"", fieldPath + "[2]"}));
}

TEST(MiningSchemaReader, ThrowsEverythingElseByValue) {
    EXPECT_FALSE(Parse(WithSchema("<MiningField name=\"nowhere\"/>").Text()).thrownAsPointer);
}

TEST(MiningSchemaReader, SaysRedefined_WhenTheSameFieldIsPredictedTwice) {
    const TestDocument document = WithSchema(
        "\n<MiningField name=\"play\" usageType=\"predicted\"/>\n<MiningField name=\"play\"  "
        "usageType=\"predicted\"/>");
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {1, "play is redefined!", "<MiningField name=\"play\"  ", fieldPath + "[2]"}));
}

TEST(MiningSchemaReader, TakesTheLaterTarget_WhenASecondSchemaPredictsAnotherField) {
    TestDocument document;
    document.miningSchema =
        "<MiningField name=\"outlook\" usageType=\"predicted\"/></MiningSchema><MiningSchema>"
        "<MiningField name=\"play\" usageType=\"predicted\"/><MiningField name=\"temperature\"/>";
    document.bayesInputs = R"(<BayesInput fieldName="temperature">
        <DerivedField name="bins"><Discretize field="temperature">
            <DiscretizeBin binValue="0"><Interval rightMargin="1"/></DiscretizeBin>
            <DiscretizeBin binValue="1"><Interval leftMargin="1"/></DiscretizeBin>
        </Discretize></DerivedField>
        <PairCounts value="0"><TargetValueCounts><TargetValueCount value="no" count="4"/></TargetValueCounts></PairCounts>
        </BayesInput>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetTargetVar()->GetName(), "play");
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(TableDump(0.5, {{0, 4}, {}})));
}

TEST(MiningSchemaReader, ForgetsTheTargetName_WhenASecondSchemaHasNone) {
    TestDocument document;
    document.miningSchema += "</MiningSchema><MiningSchema>";
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {8, "play does not match the target variable name.", "<BayesOutput",
                             "/PMML/NaiveBayesModel[1]/BayesOutput[1]"}));
    document.bayesOutput = R"(<BayesOutput fieldName=""><TargetValueCounts>
        <TargetValueCount value="yes" count="5"/><TargetValueCount value="no" count="6"/></TargetValueCounts></BayesOutput>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: 5 6 "));  // the encoder stayed
}

TEST(MiningSchemaReader, SkipsTheTargetValues_WhenNoFieldIsPredicted) {
    TestDocument document = WithSchema("<MiningField name=\"outlook\"/>");
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {8, "play does not match the target variable name.", "<BayesOutput",
                             "/PMML/NaiveBayesModel[1]/BayesOutput[1]"}));
    document.bayesOutput = R"(<BayesOutput fieldName=""><TargetValueCounts>
        <TargetValueCount value="yes" count="rubbish"/></TargetValueCounts></BayesOutput>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetTargetVar(), nullptr);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr(TableDump(0.5, {{}, {}})));
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: \n"));
    EXPECT_THAT(NamesOfRole(*outcome.model, ScoreModel::TargetRole), IsEmpty());
}

TEST(MiningSchemaReader, DeclaresDerivedInputs_WhenTheExtensionIsOurs) {
    TestDocument document = WithDerivedField(derivedFieldsExtension);
    document.bayesInputs += windyInput;
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(outcome.model->GetVarRole("windy"), -1);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Input variable names: outlook windy \n"));
}

TEST(MiningSchemaReader, FindsDerivedInputs_WhenTheyStandDeepInside) {
    TestDocument document = WithDerivedField(R"(<Extension extender="scoring.nbscore" name="DerivedFields">
        <Extension><MiningField name="windy"/></Extension></Extension>)");
    document.bayesInputs += windyInput;
    EXPECT_TRUE(Parse(document.Text()).model);
}

TEST(MiningSchemaReader, IgnoresOtherExtensions) {
    for (const std::string attributes :
         {R"(extender="someone.else" name="DerivedFields")", R"(extender="scoring.nbscore" name="derivedFields")",
          R"(name="DerivedFields")", R"(extender="scoring.nbscore")", ""}) {
        TestDocument document =
            WithDerivedField("<Extension " + attributes + "><MiningField name=\"windy\"/></Extension>");
        EXPECT_TRUE(Parse(document.Text()).model) << attributes;
        document.bayesInputs += windyInput;
        const ParseOutcome outcome = Parse(document.Text());
        ASSERT_TRUE(outcome.refusal) << attributes;
        EXPECT_EQ(outcome.refusal->GetMessage(), "Input not found in MiningSchema.") << attributes;
    }
}

TEST(MiningSchemaReader, IgnoresDerivedInputs_WhenThereIsNoTransformationDictionary) {
    TestDocument document = WithDerivedField(derivedFieldsExtension);
    document.transformations.clear();
    EXPECT_TRUE(Parse(document.Text()).model);
    document.bayesInputs += windyInput;
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {7, "Input not found in MiningSchema.", "<BayesInput fieldName=\"windy\"",
                             "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[2]"}));
}

TEST(MiningSchemaReader, Refuses_WhenOurExtensionHasNoMiningField) {
    const TestDocument document = WithDerivedField(
        "\n<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\"><DerivedField name=\"windy\"/></Extension>");
    EXPECT_TRUE(IsRefusedAs(
        Parse(document.Text()), document.Text(),
        {5, "<MiningField> is required!", "<Extension", "/PMML/NaiveBayesModel[1]/MiningSchema[1]/Extension[1]"}));
}

TEST(MiningSchemaReader, Refuses_WhenADerivedInputIsNoDerivedField) {
    const TestDocument document = WithDerivedField(
        "<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\">\n<MiningField name=\"windy\"/>\n"
        "<MiningField name=\"outlook\" /></Extension>");
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {5, "outlook is not defined!", "<MiningField name=\"outlook\" />",
                             "/PMML/NaiveBayesModel[1]/MiningSchema[1]/Extension[1]/MiningField[2]"}));
}

TEST(MiningSchemaReader, ReadsOurExtension_WhenTheTransformationDictionaryIsEmpty) {
    TestDocument document = WithDerivedField("\n" + derivedFieldsExtension);
    document.transformations = "<TransformationDictionary/>";
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {5, "windy is not defined!", "<MiningField name=\"windy\"",
                             "/PMML/NaiveBayesModel[1]/MiningSchema[1]/Extension[1]/MiningField[1]"}));
}

}  // namespace
}  // namespace nbscore::test

// Why whole self-learning documents are refused, and at which place.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;

TEST(SelfLearningRefusal, IsOfAnExtensionsValue_EvenUnderAnUnknownName) {
    SubModelText second;
    second.extensions = "<Extension name=\"other\"\nvalue=\"many\"/>";
    const std::string text = SelfLearningText({SubModelText(), second});
    const ParseOutcome outcome = Parse(text);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 9);
    EXPECT_THAT(outcome.refusal->GetMessage(), HasSubstr("many"));
    EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<Extension"));
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, PathOf(1) + "/Extension[1]");
}

TEST(SelfLearningRefusal, IsOfASubModelWithoutOutput) {
    SubModelText later = Named("later");
    later.output.clear();
    const std::string text = SelfLearningText({SubModelText(), later});
    EXPECT_TRUE(
        IsRefusedAs(Parse(text), text,
                    {1, "At least one <BayesInputs>, one <BayesOutput> and one <BayesOutput> element is required.",
                     "<NaiveBayesModel modelName=\"later\"", PathOf(1)}));
}

TEST(SelfLearningRefusal, IsOfATarget_WhenItHasNotTwoCategories) {
    const std::string message =
        "Only two-category target variable for all the models is supported for SelfLearning Model!";
    for (const std::string values : {"", R"(<Value value="yes"/>)", R"(<Value value="yes"/><Value value="yes"/>)",
                                     R"(<Value value="yes"/><Value value="no" property="missing"/>)",
                                     R"(<Value value="yes"/><Value value="no"/><Value value="perhaps"/>)"}) {
        TestDocument document;
        document.dataFields = R"(<DataField name="outlook" optype="categorical" dataType="string"/>)"
                              R"(<DataField name="play" optype="categorical" dataType="string">)" +
                              values + "</DataField>";
        SubModelText subModel;
        // Behind the schema there is rubbish that is never reached.
        subModel.inputs = "<BayesInputs><Rubbish/></BayesInputs>";
        const std::string text = SelfLearningText({subModel}, document);
        EXPECT_TRUE(IsRefusedAs(Parse(text), text, {5, message, "<MiningSchema>", PathOf(0) + "/MiningSchema[1]"}))
            << values;
    }
}

TEST(SelfLearningRefusal, IsOfASchemaWithoutTarget_InTheFirstSubModel) {
    SubModelText subModel;
    subModel.schema = Schema(R"(<MiningField name="outlook"/>)");
    const std::string text = SelfLearningText({subModel});
    EXPECT_TRUE(
        IsRefusedAs(Parse(text), text,
                    {5, "Only two-category target variable for all the models is supported for SelfLearning Model!",
                     "<MiningSchema >", PathOf(0) + "/MiningSchema[1]"}));
}

TEST(SelfLearningRefusal, IsOfALaterSchema_WhenItNamesAnotherTargetOrNone) {
    for (const std::string& fields : {std::string(R"(<MiningField name="outlook" usageType="predicted"/>)"),
                                      std::string(R"(<MiningField name="outlook"/>)"), std::string()}) {
        SubModelText later;
        later.schema = Schema(fields);
        const std::string text = SelfLearningText({SubModelText(), SubModelText(), later});
        EXPECT_TRUE(IsRefusedAs(Parse(text), text,
                                {5, "Only one target variable is supported for SelfLearning Model!", "<MiningSchema >",
                                 PathOf(2) + "/MiningSchema[1]"}))
            << fields;
    }
}

// Of two fields that a later schema predicts, the last one counts.
TEST(SelfLearningRefusal, IsOfALaterSchemasLastPredictedField_WhenItIsNotTheTarget) {
    const std::string outlook = R"(<MiningField name="outlook" usageType="predicted"/>)";
    const std::string play = R"(<MiningField name="play" usageType="predicted"/>)";
    SubModelText later = WithoutInputs();
    for (const std::string& fields : {outlook + play, play + play}) {
        later.schema = Schema(fields);
        EXPECT_TRUE(Parse(SelfLearningText({SubModelText(), later})).model) << fields;
    }
    later.schema = Schema(play + outlook);
    const std::string text = SelfLearningText({SubModelText(), later});
    const ParseOutcome outcome = Parse(text);
    EXPECT_TRUE(IsRefusedAs(outcome, text,
                            {5, "Only one target variable is supported for SelfLearning Model!", "<MiningSchema >",
                             PathOf(1) + "/MiningSchema[1]"}));
    EXPECT_FALSE(outcome.thrownAsPointer);
}

TEST(SelfLearningRefusal, IsOfAFieldTwice_OnlyInTheFirstSchema) {
    const std::string twice = Schema(R"(<MiningField name="play" usageType="predicted"/><MiningField name="outlook"/>)"
                                     "\n"
                                     R"(<MiningField  name="outlook"/>)");
    SubModelText subModel;
    subModel.schema = twice;
    EXPECT_TRUE(Parse(SelfLearningText({SubModelText(), subModel})).model);
    const std::string text = SelfLearningText({subModel, SubModelText()});
    EXPECT_TRUE(
        IsRefusedAs(Parse(text), text,
                    {1, "outlook is redefined!", "<MiningField  name", PathOf(0) + "/MiningSchema[1]/MiningField[3]"}));
}

TEST(SelfLearningRefusal, IsOfAThresholdOfZero_InALaterSubModel) {
    const std::string text = SelfLearningText({SubModelText(), Named("later", "0.0")});
    EXPECT_TRUE(IsRefusedAs(Parse(text), text,
                            {5, "Threshold can't be zero!", "<NaiveBayesModel modelName=\"later\"", PathOf(1)}));
}

TEST(SelfLearningRefusal, IsOfAnOutput_WhenItHasNotOneOrTwoEntries) {
    for (const std::string& entries : {std::string(), Entry("yes", "1") + Entry("no", "1") + Entry("yes", "1")}) {
        SubModelText later;
        later.output = Output(entries);
        const std::string text = SelfLearningText({SubModelText(), later});
        EXPECT_TRUE(IsRefusedAs(Parse(text), text,
                                {5, "One or Two <TargetValueCounts> elements required!!", "<TargetValueCounts >",
                                 PathOf(1) + "/BayesOutput[1]/TargetValueCounts[1]"}));
    }
    SubModelText oneEntry;
    oneEntry.output = Output(Entry("no", "3"));
    const ParseOutcome outcome = Parse(SelfLearningText({oneEntry}));
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: 0 3 "));
}

TEST(SelfLearningRefusal, IsOfInputsOfAnotherSubModel) {
    SubModelText later;
    later.schema = Schema(R"(<MiningField name="play" usageType="predicted"/>)");
    later.inputs = "<BayesInputs>\n<BayesInput fieldName=\"outlook\" /></BayesInputs>";
    const std::string text = SelfLearningText({SubModelText(), later});
    EXPECT_TRUE(IsRefusedAs(Parse(text), text,
                            {7, "Input not found in MiningSchema.", "<BayesInput fieldName=\"outlook\" />",
                             PathOf(1) + "/BayesInputs[1]/BayesInput[1]"}));
}

}  // namespace
}  // namespace nbscore::test

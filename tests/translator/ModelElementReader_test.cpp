#include "translator/ElementReaders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translator/ReadWith.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;

const std::string modelPath = "/PMML/NaiveBayesModel[1]";
const std::string partsMissing =
    "At least one <BayesInputs>, one <BayesOutput> and one <BayesOutput> element is required.";

/// A document whose model element has these children.
std::string WithChildren(const std::string& children) {
    return TestDocument().TextWith("<NaiveBayesModel modelName=\"m\" threshold=\"0.5\">\n" + children +
                                   "\n</NaiveBayesModel>");
}

const std::string schema = "<MiningSchema>" + TestDocument().miningSchema + "</MiningSchema>";
const std::string inputs = "<BayesInputs>" + TestDocument().bayesInputs + "</BayesInputs>";
const std::string output = TestDocument().bayesOutput;

TEST(ModelElementReader, TakesTheThresholdAsItStands_WhenItIsNotZero) {
    for (const auto& [threshold, shown] : std::vector<std::pair<std::string, std::string>>{
             {"0.001", "0.001"}, {" 1e-3 ", "0.001"}, {"-1", "-1"}, {"1e300", "1e+300"}, {"1e-300", "1e-300"}}) {
        TestDocument document;
        document.modelAttributes = "threshold=\"" + threshold + "\"";
        const ParseOutcome outcome = Parse(document.Text());
        ASSERT_TRUE(outcome.model) << threshold;
        EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Threshold value = " + shown + " Only"));
    }
}

TEST(ModelElementReader, Refuses_WhenTheThresholdIsZero) {
    for (const std::string threshold : {"0", "0.0", "-0", "0e9", " 0 "}) {
        for (const bool selfLearning : {false, true}) {
            TestDocument document;
            document.modelAttributes = "threshold=\"" + threshold + "\"";
            RecordingModel model(selfLearning);
            EXPECT_TRUE(IsRefusedAs(ReadWith(model, document.Text()), document.Text(),
                                    {5, "Threshold can't be zero!", "<NaiveBayesModel", modelPath}));
        }
    }
}

TEST(ModelElementReader, Refuses_WhenTheThresholdIsAbsentOrNoNumber) {
    for (const auto& [attributes, code] : std::vector<std::pair<std::string, int>>{{"", 2},
                                                                                   {"threshold=\"\"", 9},
                                                                                   {"threshold=\"small\"", 9},
                                                                                   {"threshold=\"NaN\"", 9},
                                                                                   {"threshold=\"1e999\"", 9}}) {
        TestDocument document;
        document.modelAttributes = attributes;
        const ParseOutcome outcome = Parse(document.Text());
        ASSERT_TRUE(outcome.refusal) << attributes;
        EXPECT_EQ(outcome.refusal->GetCode(), code) << attributes;
        EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(document.Text(), "<NaiveBayesModel"));
        EXPECT_EQ(outcome.refusal->GetPlace().elementPath, modelPath);
    }
}

TEST(ModelElementReader, SpeaksOfTheThresholdFirst_WhenThereAreNoChildren) {
    const std::string text = TestDocument().TextWith("<NaiveBayesModel threshold=\"0\"/>");
    EXPECT_TRUE(IsRefusedAs(Parse(text), text, {5, "Threshold can't be zero!", "<NaiveBayesModel", modelPath}));
}

TEST(ModelElementReader, Refuses_WhenAPartIsMissing) {
    for (const std::string& children :
         {std::string(), schema, schema + inputs, schema + output, schema + "<BayesInputs/>" + output,
          schema + "<BayesInputs><Extension/></BayesInputs>" + output,
          "<Extension>" + inputs + output + "</Extension>"}) {
        const std::string text = WithChildren(children);
        EXPECT_TRUE(IsRefusedAs(Parse(text), text, {1, partsMissing, "<NaiveBayesModel", modelPath})) << children;
    }
}

TEST(ModelElementReader, NeedsNoInputs_WhenTheModelIsSelfLearning) {
    RecordingModel model(true);
    EXPECT_FALSE(ReadWith(model, WithChildren(schema + output)).refusal);
    const std::string text = WithChildren(schema + inputs);
    RecordingModel other(true);
    EXPECT_TRUE(IsRefusedAs(ReadWith(other, text), text, {1, partsMissing, "<NaiveBayesModel", modelPath}));
}

TEST(ModelElementReader, SkipsUnknownChildren) {
    EXPECT_TRUE(Parse(WithChildren("<Extension name=\"meanPerformance\" value=\"rubbish\"/><Output/>" + schema +
                                   "<LocalTransformations/>" + inputs + "<ModelVerification/>" + output))
                    .model);
}

TEST(ModelElementReader, AddsUpTheInputs_WhenThereAreSeveralBayesInputs) {
    const ParseOutcome outcome = Parse(WithChildren(schema + inputs + inputs + "<BayesInputs/>" + output));
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Input variable names: outlook outlook \n"));
}

TEST(ModelElementReader, TakesTheOutputBeforeTheInputs) {
    EXPECT_TRUE(Parse(WithChildren(schema + output + inputs)).model);
}

TEST(ModelElementReader, RefusesInputs_WhenTheyStandBeforeTheSchema) {
    const std::string text = WithChildren(inputs + schema + output);
    EXPECT_TRUE(IsRefusedAs(
        Parse(text), text,
        {7, "Input not found in MiningSchema.", "<BayesInput fieldName", modelPath + "/BayesInputs[1]/BayesInput[1]"}));
}

/// A document of several sub-models, each of which has a mining schema and an output for this field.
std::string SubModels(const std::vector<std::string>& schemas) {
    std::string models;
    for (const std::string& fields : schemas) {
        models += "\n<NaiveBayesModel modelName=\"m\" threshold=\"1\">\n<MiningSchema>" + fields + "</MiningSchema>" +
                  output + "</NaiveBayesModel>";
    }
    return TestDocument().TextWith(models);
}

const std::string predictsPlay = R"(<MiningField name="outlook"/><MiningField name="play" usageType="predicted"/>)";

TEST(ModelElementReader, AcceptsSubModels_WhenTheyShareATargetOfTwoCategories) {
    RecordingModel model(true);
    const ParseOutcome outcome = ReadWith(model, SubModels({predictsPlay, predictsPlay, predictsPlay}));
    EXPECT_FALSE(outcome.refusal) << outcome.refusal->GetMessage();
    EXPECT_EQ(model.GetModel().GetVarRole("outlook"), 2);
}

TEST(ModelElementReader, GivesLaterFieldsARole_WhenOnlyALaterSubModelListsThem) {
    RecordingModel model(true);
    const std::string later = predictsPlay + R"(<MiningField name="temperature"/>)";
    EXPECT_FALSE(ReadWith(model, SubModels({predictsPlay, later})).refusal);
    EXPECT_EQ(model.GetModel().GetVarRole("temperature"), 2);
}

TEST(ModelElementReader, Refuses_WhenTheSharedTargetHasNotTwoCategories) {
    const std::string message =
        "Only two-category target variable for all the models is supported for SelfLearning Model!";
    for (const std::string& fields : {std::string(R"(<MiningField name="temperature" usageType="predicted"/>)"),
                                      std::string(R"(<MiningField name="outlook"/>)")}) {
        RecordingModel model(true);
        const std::string text = SubModels({fields});
        EXPECT_TRUE(
            IsRefusedAs(ReadWith(model, text), text, {5, message, "<MiningSchema>", modelPath + "/MiningSchema[1]"}));
    }
}

TEST(ModelElementReader, Refuses_WhenALaterSubModelPredictsAnotherFieldOrNone) {
    for (const std::string& fields :
         {std::string(R"(<MiningField  name="outlook" usageType="predicted"/>)"), std::string("<!--none-->")}) {
        RecordingModel model(true);
        const std::string text = SubModels({predictsPlay, fields});
        EXPECT_TRUE(IsRefusedAs(ReadWith(model, text), text,
                                {5, "Only one target variable is supported for SelfLearning Model!",
                                 "<MiningSchema>" + fields, "/PMML/NaiveBayesModel[2]/MiningSchema[1]"}));
    }
}

}  // namespace
}  // namespace nbscore::test

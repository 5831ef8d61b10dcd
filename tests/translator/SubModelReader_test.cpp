// What the reader of model elements calls for each sub-model of a self-learning document, and in which order.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translator/ReadWith.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;

const std::string modelPath = "/PMML/NaiveBayesModel[1]";

SubModelText WithExtensions(const std::string& extensions) {
    SubModelText subModel;
    subModel.extensions = extensions;
    subModel.inputs.clear();
    return subModel;
}

/// What was called for a document that is read without a fault.
std::vector<std::string> CallsOf(const std::vector<SubModelText>& subModels) {
    RecordingModel model(true);
    const ParseOutcome outcome = ReadWith(model, SelfLearningText(subModels));
    EXPECT_FALSE(outcome.refusal) << outcome.refusal->GetMessage();
    return model.calls;
}

TEST(SubModelReader, GivesThresholdThenName_BeforeAnythingElse) {
    SubModelText later = Named("");
    later.inputs.clear();
    EXPECT_THAT(CallsOf({Named("a b"), later}),
                ElementsAre("model 0", "threshold", "name a b", "target play", "var outlook outlook", "encoder 0",
                            "counts 0", "target counts",  //
                            "model 1", "threshold", "name ", "target counts", "finish play"));
}

TEST(SubModelReader, CountsPredictorsAmongEachSubModelsOwnFields) {
    SubModelText later = Named("b");
    later.schema = R"(<MiningSchema><MiningField name="temperature"/><MiningField name="play" usageType="predicted"/>)"
                   R"(<MiningField name="outlook"/></MiningSchema>)";
    EXPECT_THAT(
        CallsOf({Named("a"), later, Named("c")}),
        ElementsAre("model 0", "threshold", "name a", "target play", "var outlook outlook", "encoder 0", "counts 0",
                    "target counts",  //
                    "model 1", "threshold", "name b", "var outlook outlook", "encoder 1", "counts 1",
                    "target counts",  //
                    "model 2", "threshold", "name c", "var outlook outlook", "encoder 0", "counts 0", "target counts",
                    "finish play"));
}

TEST(SubModelReader, GivesAssessmentsWhereTheyStand) {
    SubModelText subModel = WithExtensions(R"(<Extension name="meanPerformance" value="0.25"/>)"
                                           R"(<Extension name="stdDevPerformance" value=" 1e-3 "/>)");
    subModel.output += R"(<Extension name="trainingSampleSize" value="500"/>)";
    EXPECT_THAT(CallsOf({subModel}), ElementsAre("model 0", "threshold", "name a", "mean 0.25", "deviation 0.001",
                                                 "target play", "target counts", "deviation 500", "finish play"));
}

TEST(SubModelReader, PassesOverExtensionsOfOtherNames) {
    EXPECT_THAT(CallsOf({WithExtensions(R"(<Extension name="meanperformance" value="1"/>
            <Extension name="" value="1"/><Extension value="1"/><Extension name="meanPerformance " value="1"/>)")}),
                ElementsAre("model 0", "threshold", "name a", "target play", "target counts", "finish play"));
}

TEST(SubModelReader, ReadsNoExtensionInsideAnother) {
    EXPECT_THAT(CallsOf({WithExtensions(
                    R"(<Extension value="1"><Extension name="meanPerformance" value="rubbish"/></Extension>)")}),
                ElementsAre("model 0", "threshold", "name a", "target play", "target counts", "finish play"));
}

TEST(SubModelReader, RefusesAnExtensionsValue_WhateverItsName) {
    for (const std::string name :
         {R"(name="meanPerformance")", R"(name="stdDevPerformance")", R"(name="other")", "", R"(name="")"}) {
        for (const auto& [value, code] : std::vector<std::pair<std::string, int>>{{R"(value="rubbish")", 9},
                                                                                  {R"(value="")", 9},
                                                                                  {R"(value="NaN")", 9},
                                                                                  {R"(value="1e999")", 9},
                                                                                  {"", 2}}) {
            RecordingModel model(true);
            const std::string text = SelfLearningText({WithExtensions("<Extension " + name + " " + value + "/>")});
            const ParseOutcome outcome = ReadWith(model, text);
            ASSERT_TRUE(outcome.refusal) << name << value;
            EXPECT_EQ(outcome.refusal->GetCode(), code) << name << value;
            EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<Extension"));
            EXPECT_EQ(outcome.refusal->GetPlace().elementPath, modelPath + "/Extension[1]");
        }
    }
}

TEST(SubModelReader, RefusesAMissingName) {
    SubModelText nameless;
    nameless.attributes = R"( threshold="0.5" )";
    RecordingModel model(true);
    const std::string text = SelfLearningText({SubModelText(), nameless});
    const ParseOutcome outcome = ReadWith(model, text);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 2);
    EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(text, "<NaiveBayesModel  threshold"));
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, "/PMML/NaiveBayesModel[2]");
    EXPECT_EQ(model.calls.back(), "threshold");
}

TEST(SubModelReader, SpeaksOfTheThresholdBeforeTheName) {
    SubModelText subModel;
    subModel.attributes = R"(threshold="0")";
    RecordingModel model(true);
    const std::string text = SelfLearningText({subModel});
    EXPECT_TRUE(
        IsRefusedAs(ReadWith(model, text), text, {5, "Threshold can't be zero!", "<NaiveBayesModel", modelPath}));
    EXPECT_THAT(model.calls, ElementsAre("model 0"));
}

TEST(SubModelReader, GivesNoNameNorAssessment_WhenTheModelIsPlain) {
    RecordingModel model(false);
    const ParseOutcome outcome = ReadWith(
        model,
        TestDocument().TextWith(
            "<NaiveBayesModel threshold=\"1\"><Extension name=\"meanPerformance\" value=\"rubbish\"/><Extension/>" +
            TestDocument().ModelChildren() + "</NaiveBayesModel>"));
    ASSERT_FALSE(outcome.refusal) << outcome.refusal->GetMessage();
    EXPECT_THAT(model.calls, ElementsAre("model 0", "threshold", "target play", "var outlook outlook", "encoder 0",
                                         "counts 0", "target counts", "finish play"));
}

}  // namespace
}  // namespace nbscore::test

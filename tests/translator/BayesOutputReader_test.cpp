#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translator/ReadWith.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string outputPath = "/PMML/NaiveBayesModel[1]/BayesOutput[1]";

TestDocument WithOutput(const std::string& bayesOutput) {
    TestDocument document;
    document.bayesOutput = "\n" + bayesOutput;
    return document;
}

std::string Output(const std::string& field, const std::string& entries) {
    return "\n<BayesOutput fieldName=\"" + field + "\">\n<TargetValueCounts >" + entries +
           "\n</TargetValueCounts>\n</BayesOutput>";
}

std::string Entry(const std::string& value, const std::string& count) {
    return "\n<TargetValueCount value=\"" + value + "\" count=\"" + count + "\"/>";
}

TEST(BayesOutputReader, GivesTheModelItsTargetCounts) {
    const ParseOutcome outcome = Parse(WithOutput(Output("play", Entry("no", "4") + Entry("yes", "6.5"))).Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: 6.5 4 \n"));
}

TEST(BayesOutputReader, HoldsAZero_WhenATargetValueIsNotCounted) {
    const ParseOutcome outcome = Parse(WithOutput(Output("play", Entry("perhaps", "4") + Entry("yes", "6"))).Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: 6 0 \n"));
}

TEST(BayesOutputReader, TakesAnyNumberOfEntries_WhenTheModelIsPlain) {
    for (const std::string& entries : {std::string(), Entry("yes", "1") + Entry("no", "1") + Entry("yes", "1")}) {
        EXPECT_TRUE(Parse(WithOutput(Output("play", entries)).Text()).model);
    }
}

TEST(BayesOutputReader, DoesNotLearnTargetValues_WhenTheTargetDeclaresNone) {
    TestDocument document = WithOutput(Output("play", Entry("yes", "1") + Entry("unheard of", "2")));
    document.dataFields = R"(<DataField name="outlook" optype="categorical" dataType="string">
            <Value value="sunny"/><Value value="rain"/></DataField>
        <DataField name="temperature" optype="continuous" dataType="double"/>
        <DataField name="play" optype="categorical" dataType="string"/>)";
    RecordingModel model;
    ASSERT_FALSE(ReadWith(model, document.Text()).refusal);
    EXPECT_THAT(model.targetCounts, ElementsAre(1, 0));
}

TEST(BayesOutputReader, TakesTheLastOutput_WhenThereAreSeveral) {
    const ParseOutcome outcome =
        Parse(WithOutput(Output("play", Entry("yes", "1")) + Output("play", Entry("no", "9"))).Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target category counts: 0 9 \n"));
}

TEST(BayesOutputReader, Refuses_WhenItsFieldIsNotTheTarget) {
    const TestDocument document = WithOutput(Output("outlook", Entry("yes", "1")));
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {8, "outlook does not match the target variable name.", "<BayesOutput", outputPath}));
}

TEST(BayesOutputReader, Refuses_WhenItStandsBeforeTheSchema) {
    const TestDocument document;
    const std::string text = document.TextWith("<NaiveBayesModel threshold=\"1\">" + document.bayesOutput +
                                               document.ModelChildren() + "</NaiveBayesModel>");
    EXPECT_TRUE(IsRefusedAs(Parse(text), text,
                            {8, "play does not match the target variable name.", "<BayesOutput", outputPath}));
}

TEST(BayesOutputReader, Refuses_WhenItHasNoFieldName) {
    const ParseOutcome outcome = Parse(WithOutput("<BayesOutput/>").Text());
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 2);
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, outputPath);
}

TEST(BayesOutputReader, Refuses_WhenItHoldsNoTargetValueCounts) {
    const TestDocument document = WithOutput("<BayesOutput fieldName=\"play\">\n<TargetValueStats/></BayesOutput>");
    EXPECT_TRUE(IsRefusedAs(Parse(document.Text()), document.Text(),
                            {1, "Element <TargetValueCounts> was expected here.", "<TargetValueStats",
                             outputPath + "/TargetValueStats[1]"}));
}

TEST(BayesOutputReader, Refuses_WhenASelfLearningOutputHasNotOneOrTwoEntries) {
    for (const std::string& entries : {std::string(), Entry("yes", "1") + Entry("no", "2") + Entry("perhaps", "2")}) {
        RecordingModel model(true);
        const TestDocument document = WithOutput(Output("play", entries));
        EXPECT_TRUE(IsRefusedAs(ReadWith(model, document.Text()), document.Text(),
                                {5, "One or Two <TargetValueCounts> elements required!!", "<TargetValueCounts >",
                                 outputPath + "/TargetValueCounts[1]"}));
    }
}

TEST(BayesOutputReader, AcceptsASelfLearningOutput_WhenOneOfTwoCategoriesIsCounted) {
    RecordingModel model(true);
    ASSERT_FALSE(ReadWith(model, WithOutput(Output("play", Entry("no", "2"))).Text()).refusal);
    EXPECT_THAT(model.targetCounts, ElementsAre(0, 2));
}

TEST(BayesOutputReader, Refuses_WhenASelfLearningTargetHasNotTwoCategories) {
    // With a mining schema that is met before: here there is none, so no value is a category.
    RecordingModel model(true);
    const std::string text = TestDocument().TextWith("<NaiveBayesModel modelName=\"m\" threshold=\"1\">" +
                                                     Output("", Entry("a", "2")) + "</NaiveBayesModel>");
    EXPECT_TRUE(IsRefusedAs(ReadWith(model, text), text,
                            {5, "Target variable has to have two categories.", "<BayesOutput", outputPath}));
}

}  // namespace
}  // namespace nbscore::test

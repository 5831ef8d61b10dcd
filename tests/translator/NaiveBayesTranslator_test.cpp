#include "translator/NaiveBayesTranslator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "naivebayes/NaiveBayesModel.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string VersionOf(const std::string& head) {
    TestDocument document;
    document.head = head;
    const ParseOutcome outcome = Parse(document.Text());
    return outcome.model ? outcome.model->GetVersionInfo()->GetVersionInfo() : "refused";
}

TEST(NaiveBayesTranslator, ReadsADocumentIntoANaiveBayesModel) {
    const ParseOutcome outcome = Parse(TestDocument().Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_NE(dynamic_cast<NaiveBayesModel*>(outcome.model.get()), nullptr);
    EXPECT_EQ(outcome.model->GetModelType(), 21);
    EXPECT_NE(outcome.model->GetDictionary()->GetVar("play"), nullptr);
    EXPECT_EQ(outcome.model->GetTransformationDictionary(), nullptr);
}

TEST(NaiveBayesTranslator, GivesTheModelItsDerivedFields) {
    TestDocument document;
    document.transformations = R"(<TransformationDictionary>
        <DerivedField name="windy" optype="categorical" dataType="string"><Constant>1</Constant></DerivedField>
    </TransformationDictionary>)";
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model);
    ASSERT_NE(outcome.model->GetTransformationDictionary(), nullptr);
    EXPECT_NE(outcome.model->GetTransformationDictionary()->GetVar("windy"), nullptr);
    document.transformations = "<TransformationDictionary/>";
    EXPECT_NE(Parse(document.Text()).model->GetTransformationDictionary(), nullptr);
}

TEST(NaiveBayesTranslator, TakesTheVersion_FromTheFirstApplicationAnywhere) {
    EXPECT_EQ(VersionOf(R"(<Header><Application name="writer" version="7.5"/></Header>)"), "7.5");
    EXPECT_EQ(
        VersionOf(R"(<Header><Extension><Application version="1"/></Extension><Application version="2"/></Header>)"),
        "1");
    EXPECT_EQ(VersionOf(R"(<Header><Application version=""/><Application version="2"/></Header>)"), "2.1");
}

TEST(NaiveBayesTranslator, SaysVersionTwoOne_WhenTheDocumentSaysNone) {
    EXPECT_EQ(VersionOf("<Header/>"), "2.1");
    EXPECT_EQ(VersionOf(R"(<Header><Application name="writer"/></Header>)"), "2.1");
    EXPECT_EQ(VersionOf(R"(<Header><Application name="writer" version=""/></Header>)"), "2.1");
}

TEST(NaiveBayesTranslator, ReadsTheFirstModelElementAlone_WhenThereAreSeveral) {
    const TestDocument document;
    const ParseOutcome outcome = Parse(document.TextWith(
        document.Model() + R"(<NaiveBayesModel algorithmName="SelfLearning" threshold="0"/><NaiveBayesModel/>)"));
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetModelType(), 21);
}

TEST(NaiveBayesTranslator, FindsTheModelElement_WhereverItStands) {
    const TestDocument document;
    EXPECT_TRUE(Parse(document.TextWith("<Extension><Deeper>" + document.Model() + "</Deeper></Extension>")).model);
}

TEST(NaiveBayesTranslator, ReadsAPlainModel_WhateverOtherAlgorithmItNames) {
    for (const std::string algorithm : {"", "selflearning", "SelfLearning ", "NaiveBayes"}) {
        TestDocument document;
        document.modelAttributes += " algorithmName=\"" + algorithm + "\"";
        EXPECT_TRUE(Parse(document.Text()).model) << algorithm;
    }
}

TEST(NaiveBayesTranslator, ReadsAPlainModel_WhenTheDictionaryMarksATargetToo) {
    TestDocument document;
    document.dataFields +=
        R"(<DataField name="offer"><Extension name="isSelfLearningTarget" value="true"/></DataField>)";
    EXPECT_TRUE(Parse(document.Text()).model);
}

TEST(NaiveBayesTranslator, TakesAnyRootElement) {
    std::string text = TestDocument().Text();
    text.replace(text.find("<PMML version=\"4.4\">"), 20, "<Anything>");
    text.replace(text.find("</PMML>"), 7, "</Anything>");
    EXPECT_TRUE(Parse(text).model);
}

TEST(NaiveBayesTranslator, Refuses_WhenThereIsNoModelElement) {
    for (const std::string& models : {std::string(), std::string("<TreeModel/>")}) {
        const std::string text = TestDocument().TextWith(models);
        EXPECT_TRUE(IsRefusedAs(Parse(text), text, {1, "<NaiveBayesModel> is required!", "<PMML", "/PMML"}));
    }
}

TEST(NaiveBayesTranslator, Refuses_WhenAMarkDiffersInCaseAndThereIsNoModelElement) {
    TestDocument document;
    document.dataFields +=
        R"(<DataField name="offer"><Extension name="isSelfLearningTarget" value="TRUE"/></DataField>)";
    const std::string text = document.TextWith("");
    EXPECT_TRUE(IsRefusedAs(Parse(text), text, {1, "<NaiveBayesModel> is required!", "<PMML", "/PMML"}));
}

TEST(NaiveBayesTranslator, Refuses_WhenThereIsNoDataDictionary) {
    const std::string text = "<PMML>\n<Header/>" + TestDocument().Model() + "</PMML>";
    const ParseOutcome outcome = Parse(text);
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 1);
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, "/PMML");
    EXPECT_EQ(outcome.refusal->GetPlace().line, 1u);
}

TEST(NaiveBayesTranslator, SpeaksOfTheDictionaryFirst_WhenTheModelIsMissingToo) {
    TestDocument document;
    document.dataFields += "\n<Extension/>";
    const std::string text = document.TextWith("");
    EXPECT_TRUE(
        IsRefusedAs(Parse(text), text,
                    {1, "<DataField> is required here!!", "<Extension", "/PMML/DataDictionary[1]/Extension[1]"}));
}

TEST(NaiveBayesTranslator, Refuses_WhenThereIsNoDocument) {
    NaiveBayesTranslator translator("");
    const ParseOutcome outcome =
        OutcomeOf([&] { return translator.ParseFromTree(static_cast<xercesc::DOMDocument*>(nullptr), "UTF-8"); });
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 1);
}

TEST(NaiveBayesTranslator, Refuses_WhenNobodyKnowsTheEncoding) {
    const ParseOutcome outcome = Parse(TestDocument().Text(), "no-such-encoding");
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 10);
}

TEST(NaiveBayesTranslator, GivesNamesInTheEncodingAskedFor) {
    TestDocument document;
    document.dataFields += "<DataField name=\"f\xC3\xA4r\" optype=\"continuous\" dataType=\"double\"/>";
    document.miningSchema += "<MiningField name=\"f\xC3\xA4r\"/>";
    EXPECT_EQ(Parse(document.Text(), "UTF-8").model->GetVarRole("f\xC3\xA4r"), 2);
    EXPECT_EQ(Parse(document.Text(), "ISO-8859-1").model->GetVarRole("f\xE4r"), 2);
}

TEST(NaiveBayesTranslator, GivesANewModelEachTime_WhenItReadsSeveralDocuments) {
    NaiveBayesTranslator translator("");
    TestDocument other;
    other.modelAttributes = "threshold=\"0.25\"";
    const ParseOutcome first = ParseWith(translator, TestDocument().Text());
    const ParseOutcome second = ParseWith(translator, other.Text());
    ASSERT_TRUE(first.model && second.model);
    EXPECT_THAT(DumpOf(*first.model), HasSubstr("Threshold value = 0.5 "));
    EXPECT_THAT(DumpOf(*second.model), HasSubstr("Threshold value = 0.25 "));
}

TEST(NaiveBayesTranslator, LeavesItsModelsAlone_WhenItIsDestroyed) {
    auto translator = std::make_unique<NaiveBayesTranslator>("");
    const ParseOutcome outcome = ParseWith(*translator, TestDocument().Text());
    translator.reset();
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Threshold value = 0.5 "));
}

/// Reads parsed documents as a host does that has a parser of its own.
class DomReading {
public:
    ParseOutcome Parse(const std::string& text) {
        ParseOutcome outcome;
        VisitDom(text, [&](xercesc::DOMDocument& document) {
            outcome = OutcomeOf([&] { return translator.ParseFromTree(&document, "UTF-8"); });
        });
        return outcome;
    }

    NaiveBayesTranslator translator{""};
};

TestDocument Faulty() {
    TestDocument document;
    document.bayesInputs += "\n<Fault/>";
    return document;
}

TEST(NaiveBayesTranslator, HandsOverTheUnfinishedModel_WhenReadingFailsHalfWay) {
    DomReading reading;
    EXPECT_TRUE(reading.Parse(Faulty().Text()).refusal);
    const std::unique_ptr<ScoreModel> unfinished(reading.translator.TakeUnfinishedModel());
    ASSERT_TRUE(unfinished);
    EXPECT_EQ(unfinished->GetVarRole("outlook"), 2);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
}

TEST(NaiveBayesTranslator, HandsOverTheUnfinishedModel_WhenThereIsASecondTarget) {
    DomReading reading;
    TestDocument document;
    document.miningSchema += R"(<MiningField name="temperature" usageType="predicted"/>)";
    document.miningSchema.erase(document.miningSchema.find("<MiningField name=\"temperature\"/>"), 32);
    EXPECT_TRUE(reading.Parse(document.Text()).thrownAsPointer);
    EXPECT_TRUE(std::unique_ptr<ScoreModel>(reading.translator.TakeUnfinishedModel()));
}

TEST(NaiveBayesTranslator, FreesTheUnfinishedModel_WhenNobodyTakesIt) {
    DomReading reading;
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(reading.Parse(Faulty().Text()).refusal);
}

TEST(NaiveBayesTranslator, HandsOverNothing_WhenReadingSucceedsOrNoModelWasBegun) {
    DomReading reading;
    const ParseOutcome good = reading.Parse(TestDocument().Text());
    ASSERT_TRUE(good.model);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
    // The model of the first document is the caller's: a failure afterwards must not hand it over again.
    EXPECT_TRUE(reading.Parse(TestDocument().TextWith("")).refusal);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
    EXPECT_THAT(DumpOf(*good.model), HasSubstr("Threshold value = 0.5 "));
}

TEST(NaiveBayesTranslator, HandsOverNothing_WhenOnlyAnEarlierDocumentFailed) {
    DomReading reading;
    EXPECT_TRUE(reading.Parse(Faulty().Text()).refusal);
    EXPECT_TRUE(reading.Parse(TestDocument().Text()).model);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
    EXPECT_TRUE(reading.Parse(Faulty().Text()).refusal);
    EXPECT_TRUE(reading.Parse(TestDocument().TextWith("")).refusal);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
    EXPECT_TRUE(reading.Parse(Faulty().Text()).refusal);
    EXPECT_TRUE(OutcomeOf([&] {
                    return reading.translator.ParseFromTree(static_cast<xercesc::DOMDocument*>(nullptr), "no-such");
                }).refusal);
    EXPECT_EQ(reading.translator.TakeUnfinishedModel(), nullptr);
}

TEST(NaiveBayesTranslator, ReadsAgain_WhenAnEarlierDocumentWasRefused) {
    NaiveBayesTranslator translator("");
    EXPECT_TRUE(ParseWith(translator, Faulty().Text()).refusal);
    EXPECT_TRUE(ParseWith(translator, TestDocument().Text()).model);
    EXPECT_TRUE(ParseWith(translator, TestDocument().TextWith("")).refusal);
    EXPECT_TRUE(ParseWith(translator, Faulty().Text()).refusal);
    EXPECT_TRUE(ParseWith(translator, TestDocument().Text()).model);
}

TEST(NaiveBayesTranslator, ForgetsTheTargetOfTheDocumentBefore) {
    NaiveBayesTranslator translator("");
    EXPECT_TRUE(ParseWith(translator, TestDocument().Text()).model);
    TestDocument document;
    document.miningSchema = R"(<MiningField name="outlook"/>)";
    const ParseOutcome outcome = ParseWith(translator, document.Text());
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetMessage(), "play does not match the target variable name.");
}

TEST(NaiveBayesTranslator, NamesTheSource_WhenTheDocumentCameFromANamedStream) {
    NaiveBayesTranslator translator("");
    const ParseOutcome outcome = OutcomeOf([&] {
        std::istringstream stream(Faulty().Text());
        return translator.ParseFromTree(stream, "UTF-8", "weather.pmml");
    });
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetPlace().source, "weather.pmml");
    EXPECT_EQ(outcome.refusal->GetPlace().line, LineOf(Faulty().Text(), "<Fault/>"));
}

}  // namespace
}  // namespace nbscore::test

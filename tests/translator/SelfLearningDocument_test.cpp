// Whole self-learning documents, from the text to the model.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/ModelSelfCheck.h"
#include "framework/NumericValue.h"
#include "selflearning/SelfLearningModel.h"
#include "selflearning/SelfLearningResult.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Descriptor = SelfLearningResult::ModelDescriptor;

const double missing = NumericValue::GetSysmisValue();

SelfLearningModel& SetIn(const ParseOutcome& outcome) {
    return dynamic_cast<SelfLearningModel&>(*outcome.model);
}

std::string ObstacleOf(const ParseOutcome& outcome) {
    return dynamic_cast<const ModelSelfCheck&>(*outcome.model).FindScoringObstacle().message;
}

std::vector<Descriptor> Describe(const ParseOutcome& outcome, const std::string& outlook) {
    BaseCaseRecord record({"outlook"});
    if (!outlook.empty()) record.SetText(0, outlook);
    ScoreResult* scored = nullptr;
    outcome.model->GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> owner(scored);
    return dynamic_cast<const VectorValue<Descriptor>&>(*scored->GetPrediction()).GetVectorValue();
}

TEST(SelfLearningDocument, MakesASetWithoutSubModels_WhenOnlyAFieldIsMarked) {
    TestDocument document;
    document.dataFields += MarkedField();
    const ParseOutcome outcome = Parse(document.TextWith(""));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(outcome.model->GetModelType(), 25);
    EXPECT_EQ(SetIn(outcome).GetNumOfModels(), 0);
    EXPECT_THAT(SetIn(outcome).GetPredictorVarNames(), ElementsAre("outlook", "temperature", "play", "offer"));
    EXPECT_THAT(SetIn(outcome).GetAllModelNames(), ElementsAre("card", "loan"));
    EXPECT_EQ(outcome.model->GetVersionInfo()->GetVersionInfo(), "2.1");
    EXPECT_EQ(ObstacleOf(outcome), "");
    EXPECT_THAT(Describe(outcome, "rain"), IsEmpty());
}

TEST(SelfLearningDocument, KeepsSubModelsInDocumentOrder) {
    SubModelText second = Named("second", "2");
    second.output = Output(Entry("no", "7") + Entry("yes", "1"));
    SubModelText third = Named("third");
    third.inputs.clear();
    const ParseOutcome outcome = Parse(SelfLearningText({Named("first"), second, third}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_THAT(SetIn(outcome).GetModelNames(), ElementsAre("first", "second", "third"));
    EXPECT_EQ(ObstacleOf(outcome), "");

    // The rows of "rain" are 2 and 4, of "sunny" 3 and 1; the targets of first and third are counted 5 and 5.
    const double yes = (2 + 1) / (2 * 2 + 1 / 2.0) * ((2 + 2) / (2 * 2 + 5.0));
    const double no = (2 + 7) / (2 * 2 + 1 / 2.0) * ((2 + 4) / (2 * 2 + 5.0));
    const std::vector<Descriptor> rain = Describe(outcome, "rain");
    ASSERT_EQ(rain.size(), 3u);
    EXPECT_EQ(rain[0].modelName, "first");
    EXPECT_DOUBLE_EQ(rain[0].score, 4.5 / 7);
    EXPECT_EQ(rain[1].modelName, "second");
    EXPECT_DOUBLE_EQ(rain[1].score, no / (yes + no));
    EXPECT_EQ(rain[2].modelName, "third");
    EXPECT_DOUBLE_EQ(rain[2].score, 5.5 / 3);
    EXPECT_EQ(rain[2].assessmentMean, missing);
    EXPECT_DOUBLE_EQ(Describe(outcome, "")[0].score, 5.5 / 3);
}

TEST(SelfLearningDocument, GivesTheModelWhatAPlainDocumentGives) {
    TestDocument document;
    document.head = R"(<Header><Application version="7.5"/></Header>)";
    const ParseOutcome outcome = Parse(SelfLearningText({SubModelText()}, document));
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetVersionInfo()->GetVersionInfo(), "7.5");
    EXPECT_THAT(NamesOfRole(*outcome.model, ScoreModel::TargetRole), ElementsAre("play"));
    EXPECT_THAT(NamesOfRole(*outcome.model, ScoreModel::PredictorRole), ElementsAre("outlook"));
    EXPECT_EQ(outcome.model->GetTargetVar()->GetName(), "play");
    EXPECT_THAT(DumpOf(*outcome.model), HasSubstr("Target categories: yesnoDict"));
}

TEST(SelfLearningDocument, NotesEveryFieldButTheTarget_UsedOrNot) {
    TestDocument document;
    document.dataFields += MarkedField();
    const ParseOutcome outcome = Parse(SelfLearningText({SubModelText()}, document));
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(SetIn(outcome).GetPredictorVarNames(), ElementsAre("outlook", "temperature", "offer"));
    EXPECT_THAT(SetIn(outcome).GetAllModelNames(), ElementsAre("card", "loan"));
    EXPECT_THAT(SetIn(outcome).GetModelNames(), ElementsAre("a"));
}

TEST(SelfLearningDocument, LeavesTheTargetOut_WhenItIsTheMarkedField) {
    TestDocument document;
    document.dataFields = MarkedField("play") + R"(<DataField name="outlook" optype="categorical" dataType="string"/>)";
    SubModelText subModel = WithoutInputs();
    subModel.output = Output(Entry("card", "1"));
    const ParseOutcome outcome = Parse(SelfLearningText({subModel}, document));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_THAT(SetIn(outcome).GetPredictorVarNames(), ElementsAre("outlook"));
    EXPECT_THAT(SetIn(outcome).GetAllModelNames(), ElementsAre("card", "loan"));
}

TEST(SelfLearningDocument, HasNoListOfAllNames_WhenNoFieldIsMarked) {
    const ParseOutcome outcome = Parse(SelfLearningText({SubModelText()}));
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(SetIn(outcome).GetAllModelNames(), IsEmpty());
}

TEST(SelfLearningDocument, HasNoListOfAllNames_WhenTheMarkedFieldDeclaresNoValues) {
    TestDocument document;
    document.dataFields +=
        R"(<DataField name="offer"><Extension name="isSelfLearningTarget" value="true"/></DataField>)";
    const ParseOutcome outcome = Parse(SelfLearningText({SubModelText()}, document));
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(SetIn(outcome).GetAllModelNames(), IsEmpty());
}

TEST(SelfLearningDocument, TakesTheLaterOfDeviationAndSampleSize) {
    const std::string deviation = R"(<Extension name="stdDevPerformance" value="0.2"/>)";
    const std::string size = R"(<Extension name="trainingSampleSize" value="500"/>)";
    const std::string mean = R"(<Extension name="meanPerformance" value="0.7"/>)";
    SubModelText first, second, third;
    first.extensions = mean + deviation + size;
    second.extensions = size + deviation;
    third.extensions = R"(<Extension name="other" value="3"/>)";
    const ParseOutcome outcome = Parse(SelfLearningText({first, second, third}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    const std::vector<Descriptor> described = Describe(outcome, "rain");
    EXPECT_EQ(described[0].assessmentMean, 0.7);
    EXPECT_EQ(described[0].assessmentStdDev, 500);
    EXPECT_EQ(described[1].assessmentMean, missing);
    EXPECT_EQ(described[1].assessmentStdDev, 0.2);
    EXPECT_EQ(described[2].assessmentMean, missing);
    EXPECT_EQ(described[2].assessmentStdDev, missing);
}

TEST(SelfLearningDocument, NeedsAName_WhichMayBeEmptyOrRepeated) {
    const ParseOutcome outcome = Parse(SelfLearningText({Named(""), Named("twice"), Named("twice")}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_THAT(SetIn(outcome).GetModelNames(), ElementsAre("", "twice", "twice"));
    SubModelText nameless;
    nameless.attributes = R"(threshold="0.5")";
    const std::string text = SelfLearningText({nameless});
    const ParseOutcome refused = Parse(text);
    ASSERT_TRUE(refused.refusal);
    EXPECT_EQ(refused.refusal->GetCode(), 2);
    EXPECT_THAT(refused.refusal->GetMessage(), HasSubstr("modelName"));
    EXPECT_EQ(refused.refusal->GetPlace().line, LineOf(text, "<NaiveBayesModel"));
    EXPECT_EQ(refused.refusal->GetPlace().elementPath, PathOf(0));
}

TEST(SelfLearningDocument, PassesOverExtensionsAmongInputs) {
    const std::string extension = R"(<Extension name="trainingSampleSize" value="none"><BayesInput/></Extension>)";
    SubModelText subModel = Named("b");
    subModel.inputs = "<BayesInputs>" + extension + TestDocument().bayesInputs + extension + "</BayesInputs>";
    const ParseOutcome outcome = Parse(SelfLearningText({Named("a"), subModel}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    const std::vector<Descriptor> rain = Describe(outcome, "rain");
    EXPECT_EQ(rain.at(1).score, rain.at(0).score);
    EXPECT_EQ(rain.at(1).assessmentStdDev, missing);
}

TEST(SelfLearningDocument, NeedsNoInputs) {
    const ParseOutcome outcome = Parse(SelfLearningText({WithoutInputs()}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(ObstacleOf(outcome), "");
    EXPECT_DOUBLE_EQ(Describe(outcome, "rain")[0].score, 5.5 / 3);
}

TEST(SelfLearningDocument, IsPlain_WhenOnlyALaterModelElementNamesTheAlgorithm) {
    const TestDocument document;
    const ParseOutcome outcome =
        Parse(document.TextWith(document.Model() + SubModelElements({SubModelText(), SubModelText()})));
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetModelType(), 21);
}

TEST(SelfLearningDocument, TakesEveryModelElement_WhateverAlgorithmLaterOnesName) {
    SubModelText later = Named("later");
    later.attributes += R"( algorithmName="other")";
    const ParseOutcome outcome = Parse(
        TestDocument().TextWith(SubModelElements({SubModelText()}) + "<Extension>" + later.Text() + "</Extension>"));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_THAT(SetIn(outcome).GetModelNames(), ElementsAre("a", "later"));
}

TEST(SelfLearningDocument, UsesDerivedFields_InTheSubModelThatDeclaresThem) {
    TestDocument document;
    document.transformations =
        R"(<TransformationDictionary><DerivedField name="sky" optype="categorical" dataType="string">
            <FieldRef field="outlook"/><Value value="sunny"/><Value value="rain"/></DerivedField>
        </TransformationDictionary>)";
    SubModelText derived = Named("derived");
    derived.schema = Schema(R"(<MiningField name="play" usageType="predicted"/><MiningField name="temperature"/>
        <Extension extender="scoring.nbscore" name="DerivedFields"><MiningField name="sky"/></Extension>)");
    derived.inputs.replace(derived.inputs.find("fieldName=\"outlook\""), 19, "fieldName=\"sky\"");
    const ParseOutcome outcome = Parse(SelfLearningText({Named("first"), derived, Named("third")}, document));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_TRUE(SetIn(outcome).NeedDerivedPredictor());
    EXPECT_EQ(ObstacleOf(outcome), "");
    EXPECT_THAT(SetIn(outcome).GetPredictorVarNames(), ElementsAre("outlook", "temperature"));
    for (const auto& [outlook, score] :
         std::vector<std::pair<std::string, double>>{{"rain", 4.5 / 7}, {"sunny", 1.5 / 5}, {"", 5.5 / 3}}) {
        for (const Descriptor& descriptor : Describe(outcome, outlook))
            EXPECT_DOUBLE_EQ(descriptor.score, score) << descriptor.modelName << outlook;
    }
    // The third sub-model does not know the second one's derived field.
    derived.schema = SubModelText().schema;
    EXPECT_EQ(Parse(SelfLearningText({SubModelText(), derived}, document)).refusal->GetCode(), 7);
}

TEST(SelfLearningDocument, FreesTheUnfinishedModel_WhenALaterSubModelIsRefused) {
    SubModelText faulty;
    faulty.inputs += "<BayesInputs><Fault/></BayesInputs>";
    const std::string text = SelfLearningText({SubModelText(), SubModelText(), faulty});
    NaiveBayesTranslator translator("");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(ParseWith(translator, text).refusal);
    EXPECT_TRUE(ParseWith(translator, SelfLearningText({SubModelText()})).model);
    EXPECT_EQ(translator.TakeUnfinishedModel(), nullptr);
}

TEST(SelfLearningDocument, HandsOverTheUnfinishedModel_WhenALaterSubModelIsRefused) {
    SubModelText faulty;
    faulty.inputs += "<BayesInputs><Fault/></BayesInputs>";
    NaiveBayesTranslator translator("");
    VisitDom(SelfLearningText({Named("sound"), faulty}), [&](xercesc::DOMDocument& parsed) {
        EXPECT_TRUE(OutcomeOf([&] { return translator.ParseFromTree(&parsed, "UTF-8"); }).refusal);
    });
    const std::unique_ptr<ScoreModel> unfinished(translator.TakeUnfinishedModel());
    ASSERT_TRUE(unfinished);
    EXPECT_EQ(unfinished->GetModelType(), 25);
    EXPECT_THAT(dynamic_cast<SelfLearningModel&>(*unfinished).GetModelNames(), ElementsAre("sound", "a"));
}

TEST(SelfLearningDocument, IsForgotten_WhenAnotherIsRead) {
    NaiveBayesTranslator translator("");
    EXPECT_TRUE(ParseWith(translator, SelfLearningText({SubModelText(), SubModelText()})).model);
    const ParseOutcome plain = ParseWith(translator, TestDocument().Text());
    ASSERT_TRUE(plain.model);
    EXPECT_EQ(plain.model->GetModelType(), 21);
    const ParseOutcome again = ParseWith(translator, SelfLearningText({Named("again")}));
    ASSERT_TRUE(again.model);
    EXPECT_THAT(SetIn(again).GetModelNames(), ElementsAre("again"));
}

TEST(SelfLearningDocumentDeathTest, LoadsButIsNotToBeScored_WhenASubModelHasTwoOutputs) {
    SubModelText doubled;
    doubled.output += doubled.output;
    const ParseOutcome outcome = Parse(SelfLearningText({doubled, SubModelText()}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(ObstacleOf(outcome),
              "The target was counted 3 times for 2 sub-models: each needs its target counts once.");
    EXPECT_DEATH(Describe(outcome, "rain"), "");
}

TEST(SelfLearningDocumentDeathTest, LoadsButIsNotToBeScored_WhenTheTargetDeclaresAValueTwice) {
    TestDocument document;
    document.dataFields.replace(document.dataFields.find("<Value value=\"no\"/>"), 19,
                                R"(<Value value="yes"/><Value value="no"/>)");
    const ParseOutcome outcome = Parse(SelfLearningText({Named("first")}, document));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(ObstacleOf(outcome),
              "Sub-model 0 (\"first\"): The target variable \"play\" declares the value \"yes\" more than once.");
    EXPECT_DEATH(Describe(outcome, "rain"), "");
}

TEST(SelfLearningDocumentDeathTest, LoadsButIsNotToBeScored_WhenAnInputHasNoCounts) {
    SubModelText later = Named("later");
    later.inputs = R"(<BayesInputs><BayesInput fieldName="outlook"/></BayesInputs>)";
    const ParseOutcome outcome = Parse(SelfLearningText({SubModelText(), later}));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_EQ(ObstacleOf(outcome), "Sub-model 1 (\"later\"): The input \"outlook\" has no counts.");
    EXPECT_DEATH(Describe(outcome, "rain"), "");
}

}  // namespace
}  // namespace nbscore::test

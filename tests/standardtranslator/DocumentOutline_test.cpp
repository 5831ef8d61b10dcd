#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/VersionInfo.h"
#include "standardtranslator/GiveMyStandardTranslator.h"
#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string modelPath = "/PMML/NaiveBayesModel[1]";

/// The document with something in front of its model element, or in front of the inputs in it.
std::string WithPart(const std::string& part) {
    return Replaced(ColourDocument().Text(), "<NaiveBayesModel", part + "<NaiveBayesModel");
}
std::string WithModelPart(const std::string& part) {
    return Replaced(ColourDocument().Text(), "<BayesInputs>", part + "<BayesInputs>");
}
std::string WithModelAttribute(const std::string& attribute) {
    return Replaced(ColourDocument().Text(), "functionName=\"classification\"", attribute);
}

TEST(DocumentOutline, LeavesAsideWhatIsHarmless) {
    const std::vector<std::string> documents = {
        WithPart("<MiningBuildTask><Extension/></MiningBuildTask><Extension><Anything/></Extension>"),
        WithModelPart("<ModelStats/><ModelExplanation/><Extension name='note'><Other/></Extension>"),
        WithModelAttribute("algorithmName='Naive' modelName='fruit' x-mine='1' isScorable='true'"),
        Replaced(ColourDocument().Text(), "</NaiveBayesModel>", "<ModelVerification/></NaiveBayesModel>"),
        Replaced(ColourDocument().Text(), "<PairCounts", "<Extension name='count' value='4'/><PairCounts"),
        Replaced(ColourDocument().Text(), "<Value ", "<Extension><Note/></Extension><Value ")};
    for (const std::string& document : documents)
        ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
}

TEST(DocumentOutline, RefusesWhatIsNotKnown) {
    EXPECT_THAT(RefusalOf(WithPart("<Other/>")), StartsWith("1: <Other> is not understood in <PMML>"));
    EXPECT_THAT(RefusalOf(WithModelPart("<Other/>")), StartsWith("1: <Other> is not understood in <NaiveBayesModel>"));
    EXPECT_EQ(RefusalOf(WithModelAttribute("smoothing='1'")),
              "5: The attribute \"smoothing\" of <NaiveBayesModel> is not understood, and could change the answer. " +
                  modelPath);
    EXPECT_THAT(RefusalOf(Replaced(ColourDocument().Text(), "<DataField", "<Field/><DataField")),
                StartsWith("1: <Field> is not understood in <DataDictionary>"));
    EXPECT_EQ(RefusalOf(WithModelPart("<MiningSchema/>")),
              "12: There may be only one <MiningSchema> in a <NaiveBayesModel>. " + modelPath + "/MiningSchema[2]");
}

TEST(DocumentOutline, RefusesWhatIsNotKnown_InDictionariesAndExpressions) {
    const std::string text = ColourDocument().Text();
    EXPECT_THAT(RefusalOf(Replaced(text, "<Value ", "<Intervall closure='closedClosed'/><Value ")),
                StartsWith("1: <Intervall> is not understood in <DataField>"));
    EXPECT_THAT(RefusalOf(Replaced(text, "<Value ", "<Value weight='2' ")),
                StartsWith("5: The attribute \"weight\" of <Value> is not understood"));
    StandardDocument document = ColourDocument();
    document.transformations =
        XmlElement("TransformationDictionary", "",
                   DerivedText("d", XmlElement("Apply", Attribute("function", "uppercase") + Attribute("default", "x"),
                                               FieldRef("colour"))));
    EXPECT_THAT(RefusalOf(document), StartsWith("5: The attribute \"default\" of <Apply> is not understood"));
}

TEST(DocumentOutline, RefusesAttributesThatMayBeMeantForKnownOnes) {
    EXPECT_THAT(RefusalOf(Replaced(ColourDocument().Text(), "<MiningField name=\"colour\"",
                                   "<MiningField name=\"colour\" x-missingValueReplacement='red'")),
                StartsWith("5: The attribute \"x-missingValueReplacement\" of <MiningField> is not understood"));
}

TEST(DocumentOutline, RefusesContentInAnExtension_ThatWouldCountOutside) {
    const std::string text = ColourDocument().Text();
    EXPECT_THAT(RefusalOf(Replaced(text, "<TargetValueCount ",
                                   "<Extension><TargetValueCount value='pear' count='9'/></Extension>"
                                   "<TargetValueCount ")),
                StartsWith("1: <TargetValueCount> is not understood in <Extension>"));
    EXPECT_THAT(RefusalOf(Replaced(text, "<MiningField ",
                                   "<Extension><MiningField name='colour' missingValueReplacement='red'/></Extension>"
                                   "<MiningField ")),
                StartsWith("1: <MiningField> is not understood in <Extension>"));
    EXPECT_THAT(RefusalOf(WithModelPart("<Extension><Output><OutputField name='o'/></Output></Extension>")),
                StartsWith("1: <Output> is not understood in <Extension>"));
    EXPECT_THAT(RefusalOf(Replaced(text, "<PairCounts ",
                                   "<Extension name='origin'><DerivedField><Constant>red</Constant></DerivedField>"
                                   "</Extension><PairCounts ")),
                StartsWith("1: <DerivedField> is not understood in <Extension>"));
}

TEST(DocumentOutline, ReadsWhatTheExtensionOfASchemaLists) {
    const std::string listing = "<Extension extender='scoring.nbscore' name='DerivedFields'><MiningField name='";
    StandardDocument document = ColourDocument();
    document.transformations = XmlElement("TransformationDictionary", "", DerivedText("d", FieldRef("colour")));
    document.miningFields += listing + "d'/></Extension>";
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    document.miningFields = MiningField("colour") + listing + "d' missingValueReplacement='x'/></Extension>";
    EXPECT_THAT(RefusalOf(document), HasSubstr("missingValueReplacement"));
}

TEST(DocumentOutline, RefusesModelsThatAreNoneToScore) {
    EXPECT_EQ(RefusalOf(WithModelAttribute("isScorable='false'")),
              "5: <NaiveBayesModel> says isScorable=\"false\". " + modelPath);
    EXPECT_EQ(RefusalOf(WithModelAttribute("functionName='regression'")),
              "5: \"regression\" is no \"functionName\" of <NaiveBayesModel>: classification. " + modelPath);
    EXPECT_EQ(RefusalOf(WithModelAttribute("algorithmName='SelfLearning'")),
              "5: Sets of sub-models have the smoothed rule only. " + modelPath);
    EXPECT_THAT(RefusalOf(Replaced(ColourDocument().Text(), "<Value ",
                                   "<Extension name='isSelfLearningTarget' value='true'/><Value ")),
                StartsWith("5: Sets of sub-models have the smoothed rule only. /PMML/DataDictionary[1]/DataField[1]"));
    const std::string model = ColourDocument().Model();
    EXPECT_EQ(RefusalOf(ColourDocument().TextWith(model + "\n" + model)),
              "12: <NaiveBayesModel> is a second model. /PMML/NaiveBayesModel[2]");
    EXPECT_EQ(RefusalOf(ColourDocument().TextWith(model + "<TreeModel/>")),
              "12: <TreeModel> is a second model. /PMML/TreeModel[1]");
    EXPECT_EQ(RefusalOf(ColourDocument().TextWith("<AssociationModel/>")),
              "1: The document holds an AssociationModel, and no Naive Bayes model. /PMML/AssociationModel[1]");
    EXPECT_EQ(RefusalOf(ColourDocument().TextWith("")), "1: <NaiveBayesModel> is required! /PMML");
    EXPECT_EQ(RefusalOf("<PMML><NaiveBayesModel/></PMML>"), "1: <PMML> has no child <DataDictionary>. /PMML");
}

TEST(DocumentOutline, RefusesAModelWithoutInputsOrTarget) {
    StandardDocument document = ColourDocument();
    document.inputs.clear();
    EXPECT_THAT(RefusalOf(document), StartsWith("1: At least one <BayesInputs>"));
    EXPECT_THAT(RefusalOf(Replaced(Replaced(ColourDocument().Text(), "<BayesOutput", "<!--"), "</BayesOutput>", "-->")),
                StartsWith("1: At least one <BayesInputs>"));
}

TEST(DocumentOutline, TakesEveryThresholdFrom0On) {
    StandardDocument document = ColourDocument();
    document.inputs = BayesInput("colour", PairCounts("red", FruitCounts("0", "1")));
    document.threshold = "0";
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), {0, 1});
    document.threshold = "-0.5";
    EXPECT_EQ(RefusalOf(document), "5: The threshold -0.5 is below zero. " + modelPath);
    document.threshold = "none";
    EXPECT_EQ(RefusalOf(document), "9: \"none\" is no number. " + modelPath);
    EXPECT_EQ(RefusalOf(Replaced(document.Text(), "threshold=\"none\"", "")),
              "2: <NaiveBayesModel> has no attribute \"threshold\". " + modelPath);
}

TEST(DocumentOutline, LooksIntoTheWrapperOfOldDocuments) {
    const std::string text = ColourDocument().Text();
    const std::vector<std::string> documents = {
        Replaced(Replaced(text, "<BayesInputs>", "<NaiveBayes><BayesInputs>"), "</NaiveBayesModel>",
                 "</NaiveBayes></NaiveBayesModel>"),
        Replaced(Replaced(text, "<NaiveBayesModel", "<NaiveBayes><NaiveBayesModel"), "</NaiveBayesModel>",
                 "</NaiveBayesModel></NaiveBayes>")};
    for (const std::string& document : documents)
        ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
}

TEST(DocumentOutline, TakesWhatTheWrapperOfOldDocumentsSays_WhereThatIsClear) {
    const std::string text = ColourDocument().Text();
    const std::string schema = XmlElement(
        "MiningSchema", "",
        MiningField("fruit", "predicted") + TreatedField("colour", Attribute("missingValueReplacement", "red")));
    const auto wrapped = [&](const std::string& attributes, const std::string& inModel) {
        const std::string begun =
            Replaced(text, "<NaiveBayesModel", "<NaiveBayes" + attributes + ">" + schema + "<NaiveBayesModel");
        return Replaced(Replaced(begun, " threshold=\"0.001\"", inModel), "</NaiveBayesModel>",
                        "</NaiveBayesModel></NaiveBayes>");
    };
    for (const std::string& document :
         {wrapped("", " threshold='0.001'"), wrapped(" threshold='0.0010'", " threshold='0.001'"),
          wrapped(" threshold='0.001' isScorable='true'", "")}) {
        ExpectProbabilities(ScoreCase(document, {{"colour", ""}}), sharesOfRed);
    }
    const std::string path = "/PMML/NaiveBayes[1]";
    EXPECT_EQ(RefusalOf(wrapped(" threshold='0.1'", " threshold='0.001'")),
              "5: The attribute \"threshold\" of <NaiveBayes> is not understood, and could change the answer. " + path);
    EXPECT_THAT(RefusalOf(wrapped(" isScorable='false'", " threshold='0.001'")), StartsWith("5: <NaiveBayes> says"));
    EXPECT_THAT(RefusalOf(Replaced(wrapped("", " threshold='0.001'"), "<MiningField", "<MiningField weight='2'")),
                StartsWith("5: The attribute \"weight\" of <MiningField> is not understood"));
    EXPECT_THAT(RefusalOf(wrapped(" weight='2'", " threshold='0.001'")), StartsWith("5: The attribute \"weight\""));
    EXPECT_THAT(RefusalOf(wrapped(" functionName='regression'", " threshold='0.001'")), StartsWith("5: "));
    EXPECT_THAT(RefusalOf(wrapped("", "")), StartsWith("2: <NaiveBayesModel> has no attribute"));
}

TEST(DocumentOutline, TakesTheOnlySegmentOfAMiningModelForTheModel) {
    const std::string text = InMiningModel(ColourDocument(), OuterSchema(MiningField("colour")));
    ExpectProbabilities(ScoreCase(text, {{"colour", "red"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(Replaced(text, "selectFirst", "multiModelChain"), {{"colour", "red"}}), sharesOfRed);
}

TEST(DocumentOutline, JoinsThePartsOfAMiningModelAndOfItsModel) {
    StandardDocument document;
    document.miningFields = MiningField("half");
    document.inputs = DensityInput(
        "half", TargetValueStat("apple", Gaussian("100", "400")) + TargetValueStat("pear", Gaussian("75", "100")));
    document.output = OutputField("inner", "predictedValue");
    const std::string outer =
        OuterSchema(TreatedField("weight", Attribute("missingValueReplacement", "170"))) +
        XmlElement("Output", "", OutputField("outer", "transformedValue", FieldRef("inner"))) +
        XmlElement("LocalTransformations", "", DerivedNumber("half", Apply("/", FieldRef("weight") + Constant("2"))));
    const ScoredCase scored = ScoreCase(InMiningModel(document, outer), {{"weight", ""}});
    ExpectProbabilities(scored, Shares({3 * GaussianDensity(85, 100, 400), GaussianDensity(85, 75, 100)}));
    EXPECT_EQ(scored.outputs.size(), 1U);
    EXPECT_EQ(scored.outputs.at("outer"), OutputValue(std::string("apple")));
}

TEST(DocumentOutline, RefusesAMiningModelThatIsMoreThanItsOnlySegment) {
    const StandardDocument document = ColourDocument();
    const std::string text = InMiningModel(document, OuterSchema(""));
    const std::string segment = "<Segment><True/><TreeModel/></Segment>";
    EXPECT_EQ(RefusalOf(Replaced(text, "</Segmentation>", segment + "</Segmentation>")),
              "12: The <Segmentation> has 2 segments: it is read where it has one. "
              "/PMML/MiningModel[1]/Segmentation[1]");
    const std::string segmentPath = "/PMML/MiningModel[1]/Segmentation[1]/Segment[1]";
    EXPECT_EQ(RefusalOf(InMiningModel(document, OuterSchema(""), "")),
              "12: The <Segment> has no predicate <True>. " + segmentPath);
    EXPECT_THAT(RefusalOf(InMiningModel(document, OuterSchema(""), "<SimplePredicate/>")),
                StartsWith("1: <SimplePredicate> is not understood in <Segment>"));
    EXPECT_THAT(RefusalOf(Replaced(text, "selectFirst", "x-best")), StartsWith("5: \"x-best\" is no"));
    EXPECT_EQ(RefusalOf(document.TextWith("<MiningModel><Segmentation>" + segment + "</Segmentation></MiningModel>")),
              "1: The document holds a TreeModel, and no Naive Bayes model. " + segmentPath + "/TreeModel[1]");
    EXPECT_EQ(RefusalOf(document.TextWith("<MiningModel/>")),
              "1: <MiningModel> has no child <Segmentation>. /PMML/MiningModel[1]");
}

TEST(StandardTranslator, IsWhatTheFactoryMakes) {
    const std::unique_ptr<ScoreTranslator> translator(GiveMyStandardTranslator());
    const ParseOutcome outcome = ParseWith(*translator, ColourDocument().Text());
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetModelType(), ScoreModel::NaiveBayesModel);
    EXPECT_EQ(outcome.model->GetTargetVar()->GetName(), "fruit");
    EXPECT_EQ(outcome.model->GetVarRole("colour"), ScoreModel::PredictorRole);
}

TEST(StandardTranslator, ReadsADomTheSame) {
    std::unique_ptr<ScoreModel> model;
    const ParseOutcome outcome = VisitDom(ColourDocument().Text(), [&](xercesc::DOMDocument& document) {
        StandardTranslator translator;
        model.reset(translator.ParseFromTree(&document, "UTF-8"));
    });
    ASSERT_TRUE(model);
    ExpectProbabilities(ScoreCase(*model, {{"colour", "red"}}), sharesOfRed);
}

}  // namespace
}  // namespace nbscore::test

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::StartsWith;

const std::string outputPath = "/PMML/NaiveBayesModel[1]/BayesOutput[1]";
const std::string entryPath = outputPath + "/TargetValueCounts[1]/TargetValueCount";

TEST(StandardTarget, HasTheValuesThatAreCounted_WhereItDeclaresNone) {
    StandardDocument document = ColourDocument();
    document.target = DataField("fruit", FieldType::Texts);
    document.targetCounts = TargetValueCount("pear", "5") + TargetValueCount("apple", "4");
    const ScoredCase scored = ScoreCase(document, {{"colour", "red"}});
    EXPECT_EQ(scored.prediction, "apple");
    ExpectProbabilities(scored, {sharesOfRed[1], sharesOfRed[0]});
}

TEST(StandardTarget, IsFoundByNumber_WhereItHoldsNumbers) {
    StandardDocument document = ColourDocument();
    document.target = DataField("fruit", FieldType::Numbers, ValueElements({"1", "0"}));
    document.inputs = BayesInput(
        "colour", PairCounts("red", TargetValueCounts(TargetValueCount("0.0", "1") + TargetValueCount("1.0", "3"))));
    document.targetCounts = TargetValueCount("0.0", "5") + TargetValueCount(" 1 ", "4");
    const ScoredCase scored = ScoreCase(document, {{"colour", "red"}});
    EXPECT_EQ(scored.prediction, "0");
    ExpectProbabilities(scored, Shares({4, 5}));
}

TEST(StandardTarget, IsTheOneThatIsCounted_WhereTheSchemaNamesNone) {
    StandardDocument document = ColourDocument();
    const std::string text = Replaced(document.Text(), MiningField("fruit", "target"), "");
    ExpectProbabilities(ScoreCase(text, {{"colour", "red"}}), sharesOfRed);
}

TEST(StandardTarget, IsThatOfTheSchema_WhereTheCountsNameNone) {
    const std::string text = Replaced(ColourDocument().Text(), "<BayesOutput fieldName=\"fruit\"", "<BayesOutput");
    ExpectProbabilities(ScoreCase(text, {{"colour", "red"}}), sharesOfRed);
}

TEST(StandardTarget, IsRefused_WhereItIsNotClear) {
    StandardDocument document = ColourDocument();
    document.miningFields += MiningField("size", "predicted");
    document.dataFields += DataField("size", FieldType::Texts);
    EXPECT_EQ(RefusalOf(document),
              "12: Only one target is allowed. /PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[3]");
    const std::string counted =
        Replaced(ColourDocument().Text(), "<BayesOutput fieldName=\"fruit\"", "<BayesOutput fieldName=\"colour\"");
    EXPECT_EQ(RefusalOf(counted), "8: colour does not match the target variable name. " + outputPath);
    EXPECT_EQ(RefusalOf(Replaced(counted, MiningField("fruit", "target"), "")),
              "12: The input \"colour\" is the target. /PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]");
}

TEST(StandardTarget, HasNoOtherValuesThanItDeclares_UnlessTheyNeverOccurred) {
    StandardDocument document = ColourDocument();
    document.targetCounts += TargetValueCount("plum", "0");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    document.targetCounts += TargetValueCount("cherry", "0.5");
    EXPECT_EQ(RefusalOf(document), "7: The target has no value \"cherry\". " + entryPath + "[4]");
}

TEST(StandardTarget, HasACountOfZero_WhereNoneIsGiven) {
    StandardDocument document = ColourDocument();
    document.targetCounts = TargetValueCount("pear", "5");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), {0, 1});
}

TEST(StandardTarget, IsNotCountedTwiceNorBelowZero) {
    StandardDocument document = ColourDocument();
    document.targetCounts = TargetValueCount("pear", "5") + TargetValueCount(" pear", "4");
    EXPECT_EQ(RefusalOf(document), "12: The value \" pear\" is there twice. " + entryPath + "[2]");
    document.targetCounts = TargetValueCount("pear", "-1");
    EXPECT_EQ(RefusalOf(document), "5: The count -1 is below zero. " + entryPath + "[1]");
}

std::string Targets(const std::string& values, const std::string& attributes = "") {
    return XmlElement("Targets", "", XmlElement("Target", Attribute("field", "fruit") + attributes, values));
}

std::string TargetValue(const std::string& value, const std::string& prior) {
    return XmlElement("TargetValue", Attribute("value", value) + Attribute("priorProbability", prior));
}

std::string WithTargets(const std::string& targets) {
    return Replaced(ColourDocument().Text(), "<BayesInputs>", targets + "<BayesInputs>");
}

const std::string targetPath = "/PMML/NaiveBayesModel[1]/Targets[1]/Target[1]";

TEST(StandardTarget, HasItsPriorProbabilities_WhereACaseHasNoResult) {
    const std::string text = WithTargets(Targets(TargetValue("pear", "0.75") + TargetValue("apple", "0.25")));
    const ScoredCase invalid = ScoreCase(text, {{"colour", "blue"}});
    EXPECT_EQ(invalid.prediction, "pear");
    EXPECT_EQ(invalid.facts.outcome, CaseOutcome::InvalidValue);
    ExpectProbabilities(invalid, {0.25, 0.75});
    ExpectProbabilities(ScoreCase(text, {{"colour", "red"}}), sharesOfRed);
}

TEST(StandardTarget, HasPriorProbabilitiesForAllValuesOrNone) {
    EXPECT_EQ(RefusalOf(WithTargets(Targets(TargetValue("pear", "0.75")))),
              "12: The target's value \"apple\" has no priorProbability, and others have one. " + targetPath);
    EXPECT_EQ(RefusalOf(WithTargets(Targets(TargetValue("pear", "1.5")))),
              "5: The priorProbability 1.5 is no probability. " + targetPath + "/TargetValue[1]");
    EXPECT_EQ(RefusalOf(WithTargets(Targets(TargetValue("plum", "0.5")))),
              "7: The target has no value \"plum\". " + targetPath + "/TargetValue[1]");
}

TEST(StandardTarget, IsRefused_WhereTargetsSayWhatIsNotUnderstood) {
    EXPECT_EQ(RefusalOf(WithTargets(XmlElement("Targets", "", XmlElement("Target", Attribute("field", "colour"), "")))),
              "12: The <Target> is of the field \"colour\", which is not predicted. " + targetPath);
    EXPECT_THAT(RefusalOf(WithTargets(Targets("", Attribute("rescaleFactor", "2")))),
                StartsWith("5: The attribute \"rescaleFactor\" of <Target> is not understood"));
}

}  // namespace
}  // namespace nbscore::test

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::StartsWith;

std::string TruthField(const std::string& name, const std::string& content = "") {
    return XmlElement("DataField",
                      Attribute("name", name) + Attribute("optype", "categorical") + Attribute("dataType", "boolean"),
                      content);
}

/// The document of colours with a field of truth values in their place: three of four apples are ripe, one of five
/// pears is.
/// @param yes how its counts spell the two values.
StandardDocument RipeDocument(const std::string& yes, const std::string& no, const std::string& declared = "") {
    StandardDocument document = ColourDocument();
    document.dataFields = TruthField("ripe", declared);
    document.miningFields = MiningField("ripe");
    document.inputs =
        BayesInput("ripe", PairCounts(yes, FruitCounts("3", "1")) + PairCounts(no, FruitCounts("1", "4")));
    return document;
}

void ExpectRipeness(const StandardDocument& document) {
    for (const std::string yes : {"true", "TRUE", "True", "1", "1.0"})
        ExpectProbabilities(ScoreCase(document, {{"ripe", yes}}), sharesOfRed);
    for (const std::string no : {"false", "FALSE", "0", "0.0"})
        ExpectProbabilities(ScoreCase(document, {{"ripe", no}}), sharesOfGreen);
    EXPECT_EQ(ScoreCase(document, {{"ripe", "perhaps"}}).facts.outcome, CaseOutcome::InvalidValue);
}

TEST(TruthFields, AreCountedHoweverTheyAreSpelt) {
    ExpectRipeness(RipeDocument("true", "false"));
    ExpectRipeness(RipeDocument("TRUE", "FALSE"));
    ExpectRipeness(RipeDocument("1", "0"));
    ExpectRipeness(RipeDocument(" True", "False"));
    EXPECT_THAT(RefusalOf(RipeDocument("TRUE", "1")), StartsWith("12: "));
}

TEST(TruthFields, AreDeclaredHoweverTheyAreSpelt) {
    ExpectRipeness(RipeDocument("true", "false", ValueElements({"TRUE", "FALSE"})));
    ExpectRipeness(RipeDocument("TRUE", "FALSE", ValueElements({"1", "0"})));
    const StandardDocument onlyTrue = RipeDocument("1", "0", ValueElement("TRUE"));
    ExpectProbabilities(ScoreCase(onlyTrue, {{"ripe", "1"}}), sharesOfRed);
    EXPECT_EQ(ScoreCase(onlyTrue, {{"ripe", "false"}}).facts.outcome, CaseOutcome::InvalidValue);
    const StandardDocument notTrue = RipeDocument("1", "0", ValueElement("TRUE", "invalid"));
    EXPECT_EQ(ScoreCase(notTrue, {{"ripe", "true"}}).facts.outcome, CaseOutcome::InvalidValue);
}

TEST(TruthFields, AreReplacedHoweverTheReplacementIsSpelt) {
    StandardDocument document = RipeDocument("true", "false");
    document.miningFields = TreatedField("ripe", Attribute("missingValueReplacement", "TRUE") +
                                                     Attribute("invalidValueTreatment", "asValue") +
                                                     Attribute("invalidValueReplacement", "0"));
    ExpectProbabilities(ScoreCase(document, {{"ripe", ""}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(document, {{"ripe", "perhaps"}}), sharesOfGreen);
}

TEST(TruthFields, MayHoldOtherTexts_WhereThoseAreTakenAsTheyStand) {
    StandardDocument document = RipeDocument("yes", "no");
    document.miningFields = TreatedField("ripe", Attribute("invalidValueTreatment", "asIs"));
    ExpectProbabilities(ScoreCase(document, {{"ripe", "yes"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(document, {{"ripe", "true"}}), sharesOfNothing);
}

TEST(TruthFields, AreThoseThatExpressionsGive_HoweverTheyAreSpelt) {
    for (const std::string yes : {"true", "TRUE", "1"}) {
        StandardDocument document = ColourDocument();
        const std::string expression = Apply("if", Apply("equal", FieldRef("colour") + TextConstant("red")) +
                                                       TextConstant(yes) + TextConstant(yes == "1" ? "0" : "FALSE"));
        const auto field = [&](const std::string& name) {
            return XmlElement(
                "DerivedField",
                Attribute("name", name) + Attribute("optype", "categorical") + Attribute("dataType", "boolean"),
                expression);
        };
        const std::string counts = PairCounts("1", FruitCounts("3", "1")) + PairCounts("FALSE", FruitCounts("1", "4"));
        document.transformations = XmlElement("TransformationDictionary", "", field("ripe"));
        document.inputs = BayesInput("ripe", counts);
        ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
        ExpectProbabilities(ScoreCase(document, {{"colour", "green"}}), sharesOfGreen);
        document.transformations.clear();
        document.inputs = BayesInput("colour", field("own") + counts);
        ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    }
}

TEST(TruthFields, AreReadByExpressions_HoweverTheyAreSpelt) {
    StandardDocument document = RipeDocument("true", "false", ValueElements({"TRUE", "FALSE"}));
    document.transformations =
        XmlElement("TransformationDictionary", "",
                   DerivedText("word", Apply("if", Apply("and", FieldRef("ripe") + Apply("isValid", FieldRef("ripe"))) +
                                                       TextConstant("red") + TextConstant("green"))));
    document.inputs =
        BayesInput("word", PairCounts("red", FruitCounts("3", "1")) + PairCounts("green", FruitCounts("1", "4")));
    ExpectProbabilities(ScoreCase(document, {{"ripe", "TRUE"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(document, {{"ripe", "1"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(document, {{"ripe", "0"}}), sharesOfGreen);
}

TEST(TruthFields, MayBeTheTarget_WhichKeepsItsSpelling) {
    StandardDocument document = ColourDocument();
    const auto counted = [](const std::string& yes, const std::string& no) {
        return TargetValueCounts(TargetValueCount("TRUE", yes) + TargetValueCount("FALSE", no));
    };
    document.inputs =
        BayesInput("colour", PairCounts("red", counted("3", "1")) + PairCounts("green", counted("1", "4")));
    document.targetCounts = TargetValueCount("1", "4") + TargetValueCount("False", "5");
    document.output =
        XmlElement("OutputField", Attribute("name", "r") + Attribute("feature", "residual") + Attribute("value", "1"));
    for (const std::string& declared : {ValueElements({"true", "false"}), std::string()}) {
        document.target = TruthField("fruit", declared);
        const ScoredCase scored = ScoreCase(document, {{"colour", "red"}, {"fruit", "TRUE"}});
        ExpectProbabilities(scored, sharesOfRed);
        EXPECT_EQ(scored.prediction, declared.empty() ? "1" : "true");
        EXPECT_NEAR(std::get<double>(scored.outputs.at("r")), 1 - sharesOfRed[0], 1e-12);
    }
}

}  // namespace
}  // namespace nbscore::test

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "framework/NumberText.h"
#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::StartsWith;

const std::string fieldPath = "/PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[2]";

/// The document whose colour is treated so.
StandardDocument Treating(const std::string& attributes) {
    StandardDocument document = ColourDocument();
    document.miningFields = TreatedField("colour", attributes);
    return document;
}

StandardDocument TreatingWeight(const std::string& attributes) {
    StandardDocument document;
    document.miningFields = TreatedField("weight", attributes);
    return document;
}

std::vector<double> SharesOfWeight(double weight) {
    const auto atLeastThreshold = [](double density) { return std::max(density, 0.001); };
    return Shares(
        {3 * atLeastThreshold(GaussianDensity(weight, 200, 400)), atLeastThreshold(GaussianDensity(weight, 150, 100))});
}

void ExpectInvalid(const ScoredCase& scored, const std::string& field) {
    EXPECT_EQ(scored.facts.outcome, CaseOutcome::InvalidValue);
    EXPECT_EQ(scored.facts.field, field);
    EXPECT_EQ(scored.prediction, "none");
    EXPECT_TRUE(scored.probabilities.empty());
}

TEST(MiningFields, AreActive_WhereTheySayNothing) {
    ExpectProbabilities(ScoreCase(ColourDocument(), {{"colour", "red"}}), sharesOfRed);
    EXPECT_THAT(RefusalOf(Treating(Attribute("usageType", "Active"))), StartsWith("5: \"Active\" is no \"usageType\""));
}

TEST(MiningFields, OfOtherUsesAreLeftAside) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField("size", FieldType::Texts, ValueElement("big"));
    document.miningFields += MiningField("size", "supplementary");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}, {"size", "huge"}}), sharesOfRed);
    document.miningFields = MiningField("colour") + MiningField("size");
    ExpectInvalid(ScoreCase(document, {{"colour", "red"}, {"size", "huge"}}), "size");
}

TEST(MiningFields, EndCasesWithInvalidValues_UnlessTheySayOtherwise) {
    ExpectInvalid(ScoreCase(ColourDocument(), {{"colour", "blue"}}), "colour");
    ExpectInvalid(ScoreCase(Treating(Attribute("invalidValueTreatment", "returnInvalid")), {{"colour", "blue"}}),
                  "colour");
    for (const std::string treatment : {"asIs", "asMissing"}) {
        ExpectProbabilities(ScoreCase(Treating(Attribute("invalidValueTreatment", treatment)), {{"colour", "blue"}}),
                            sharesOfNothing);
    }
    const std::string asMissing = Attribute("invalidValueTreatment", "asMissing");
    ExpectProbabilities(
        ScoreCase(Treating(asMissing + Attribute("missingValueReplacement", "green")), {{"colour", "blue"}}),
        sharesOfGreen);
    const std::string asValue = Attribute("invalidValueTreatment", "asValue");
    ExpectProbabilities(
        ScoreCase(Treating(asValue + Attribute("invalidValueReplacement", "red")), {{"colour", "blue"}}), sharesOfRed);
    EXPECT_EQ(RefusalOf(Treating(asValue)),
              "2: <MiningField> has no attribute \"invalidValueReplacement\". " + fieldPath);
}

TEST(MiningFields, ReplaceMissingValues) {
    for (const std::string treatment : {"asMode", "asValue"}) {
        const StandardDocument document =
            Treating(Attribute("missingValueReplacement", "red") + Attribute("missingValueTreatment", treatment));
        ExpectProbabilities(ScoreCase(document, {{"colour", ""}}), sharesOfRed);
    }
    ExpectInvalid(ScoreCase(Treating(Attribute("missingValueTreatment", "returnInvalid")), {{"colour", ""}}), "colour");
    EXPECT_EQ(RefusalOf(TreatingWeight(Attribute("missingValueReplacement", "none"))),
              "9: \"none\" is no number. " + fieldPath);
}

TEST(MiningFields, TreatOutliers) {
    const std::string limits = Attribute("lowValue", "140") + Attribute("highValue", "210");
    const auto treating = [&](const std::string& outliers) {
        return TreatingWeight(Attribute("outliers", outliers) + limits);
    };
    ExpectProbabilities(ScoreCase(treating("asExtremeValues"), {{"weight", "1000"}}), SharesOfWeight(210));
    ExpectProbabilities(ScoreCase(treating("asExtremeValues"), {{"weight", "1"}}), SharesOfWeight(140));
    ExpectProbabilities(ScoreCase(treating("asMissingValues"), {{"weight", "1000"}}), Shares({3, 1}));
    ExpectProbabilities(ScoreCase(treating("asIs"), {{"weight", "160"}}), SharesOfWeight(160));
    EXPECT_EQ(RefusalOf(Treating(Attribute("outliers", "asMissingValues"))),
              "5: The mining field \"colour\" has outliers, and holds texts. " + fieldPath);
}

TEST(MiningFields, AreAsTheDictionaryHasThem_WhereTheirNamesDifferInBlanks) {
    StandardDocument document = ColourDocument();
    document.miningFields = TreatedField(" colour", Attribute("missingValueReplacement", "red"));
    ExpectProbabilities(ScoreCase(document, {{"colour", ""}}), sharesOfRed);
}

TEST(MiningFields, MayBeSpeltAsBeforeTheStandardHadThem) {
    const std::string older = Attribute("invalidValueTreatment", "x-asValue");
    const std::string replacement = Attribute("x-invalidValueReplacement", "red");
    ExpectProbabilities(ScoreCase(Treating(older + replacement), {{"colour", "blue"}}), sharesOfRed);
    ExpectProbabilities(
        ScoreCase(Treating(Attribute("invalidValueTreatment", "asValue") + replacement), {{"colour", "blue"}}),
        sharesOfRed);
    ExpectProbabilities(
        ScoreCase(Treating(older + replacement + Attribute("invalidValueReplacement", "green")), {{"colour", "blue"}}),
        sharesOfGreen);
    EXPECT_EQ(RefusalOf(Treating(older)),
              "2: <MiningField> has no attribute \"invalidValueReplacement\". " + fieldPath);
    ExpectInvalid(ScoreCase(Treating(Attribute("missingValueTreatment", "x-returnInvalid")), {{"colour", ""}}),
                  "colour");
}

TEST(MiningFields, AllowNumbersThatAreListedOrInsideAnInterval) {
    StandardDocument document;
    document.dataFields = DataField("weight", FieldType::Bins,
                                    "<Interval closure='closedClosed' leftMargin='150' rightMargin='200'/>" +
                                        ValueElement("170") + ValueElement("140") + ValueElement("0", "missing"));
    for (const double weight : {140.0, 160.0, 170.0})
        ExpectProbabilities(ScoreCase(document, {{"weight", FormatNumber(weight)}}), SharesOfWeight(weight));
    ExpectInvalid(ScoreCase(document, {{"weight", "145"}}), "weight");
    ExpectProbabilities(ScoreCase(document, {{"weight", "0"}}), Shares({3, 1}));
}

TEST(MiningFields, OverrideTheOptypeOfTheDictionary) {
    StandardDocument document;
    document.dataFields = "<DataField name=\"weight\" optype=\"categorical\"/>";
    EXPECT_THAT(RefusalOf(document), StartsWith("5: The input \"weight\" has TargetValueStats, and its field holds"));
    document.miningFields = TreatedField("weight", Attribute("optype", "continuous"));
    ExpectProbabilities(ScoreCase(document, {{"weight", "160"}}), SharesOfWeight(160));
    const ParseOutcome outcome = ParseStandard(document);
    ASSERT_TRUE(outcome.model);
    EXPECT_EQ(outcome.model->GetDictionary()->GetVar("weight")->GetMeasureLevel(), ScoreDictVar::Continuous);
    EXPECT_THAT(RefusalOf(TreatingWeight(Attribute("optype", "number"))), StartsWith("5: \"number\" is no \"optype\""));
}

TEST(MiningFields, AreRefused_WhereTheyAreNotKnown) {
    StandardDocument document = ColourDocument();
    document.miningFields += MiningField("size");
    EXPECT_EQ(RefusalOf(document),
              "5: The mining field \"size\" is not declared. /PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[3]");
    document.miningFields = MiningField("colour") + MiningField("colour");
    EXPECT_EQ(RefusalOf(document), "1: colour is redefined! /PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[3]");
    EXPECT_EQ(RefusalOf(Treating(Attribute("defaultValue", "red"))),
              "5: The attribute \"defaultValue\" of <MiningField> is not understood, and could change the answer. " +
                  fieldPath);
    EXPECT_THAT(RefusalOf(Replaced(ColourDocument().Text(), "<MiningField", "<Field/><MiningField")),
                StartsWith("1: <Field> is not understood in <MiningSchema>"));
}

TEST(MiningFields, MayListDerivedFields_WithoutTreatingThem) {
    StandardDocument document = ColourDocument();
    document.transformations =
        XmlElement("TransformationDictionary", "", DerivedText("shade", Apply("lowercase", FieldRef("colour"))));
    document.inputs = Replaced(document.inputs, "colour", "shade");
    document.miningFields += MiningField("shade");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    for (const auto& [name, value] : std::map<std::string, std::string>{{"missingValueReplacement", "red"},
                                                                        {"outliers", "asMissingValues"},
                                                                        {"invalidValueTreatment", "asMissing"},
                                                                        {"missingValueTreatment", "returnInvalid"}}) {
        document.miningFields = MiningField("colour") + TreatedField("shade", Attribute(name, value));
        EXPECT_EQ(RefusalOf(document), "5: The mining field \"shade\" has the attribute " + name +
                                           ", and is a derived field. "
                                           "/PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[3]");
    }
}

TEST(MiningFields, TreatWhatDerivedFieldsAreComputedFrom) {
    StandardDocument document = ColourDocument();
    document.transformations =
        XmlElement("TransformationDictionary", "", DerivedText("shade", Apply("lowercase", FieldRef("colour"))));
    document.inputs = Replaced(document.inputs, "colour", "shade");
    document.miningFields = TreatedField("colour", Attribute("missingValueReplacement", "green"));
    ExpectProbabilities(ScoreCase(document, {{"colour", ""}}), sharesOfGreen);
    // Also where no schema lists the field.
    document.miningFields.clear();
    ExpectInvalid(ScoreCase(document, {{"colour", "RED"}}), "colour");
}

TEST(MiningFields, OfTwoSchemasSayOneThing) {
    const std::string outer = OuterSchema(TreatedField("colour", Attribute("missingValueReplacement", "green")));
    ExpectProbabilities(ScoreCase(InMiningModel(ColourDocument(), outer), {{"colour", ""}}), sharesOfGreen);
    ExpectProbabilities(
        ScoreCase(InMiningModel(Treating(Attribute("missingValueReplacement", "green")), outer), {{"colour", ""}}),
        sharesOfGreen);
    EXPECT_THAT(RefusalOf(InMiningModel(Treating(Attribute("missingValueReplacement", "red")), outer)),
                StartsWith("12: Of the field \"colour\", the schemas of the MiningModel and of the model in it say a "
                           "different missingValueReplacement: \"green\" and \"red\". /PMML/MiningModel[1]/"
                           "Segmentation[1]/Segment[1]/NaiveBayesModel[1]/MiningSchema[1]/MiningField[2]"));
}

TEST(MiningFields, AreRefusedForFaultyDeclarations_WhereTheyAreUsed) {
    StandardDocument document = ColourDocument();
    document.dataFields += "<DataField name=\"size\" optype=\"large\"/>";
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    document.miningFields += MiningField("size");
    EXPECT_EQ(RefusalOf(document),
              "12: \"large\" is no optype: continuous, ordinal or categorical. /PMML/DataDictionary[1]/DataField[2]");
}

}  // namespace
}  // namespace nbscore::test

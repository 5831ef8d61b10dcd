#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::StartsWith;

const std::string missingNumber = "-1.7976931348623157e308";

StandardDocument WeighingPears(const std::string& distribution) {
    StandardDocument document;
    document.inputs = DensityInput(
        "weight", TargetValueStat("apple", Gaussian("200", "400")) + TargetValueStat("pear", distribution));
    return document;
}

std::string Uniform(const std::string& lower, const std::string& upper) {
    return XmlElement("UniformDistribution", Attribute("lower", lower) + Attribute("upper", upper));
}

TEST(ProducersSpellings, OfNoFigureSayThatNothingIsKnown) {
    const std::vector<double> expected = Shares({3 * GaussianDensity(190, 200, 400), 0.001});
    for (const std::string none : {"NaN", "nan", "NA", " NA "}) {
        ExpectProbabilities(ScoreCase(WeighingPears(Gaussian("150", none)), {{"weight", "190"}}), expected);
        ExpectProbabilities(ScoreCase(WeighingPears(Poisson(none)), {{"weight", "190"}}), expected);
        StandardDocument document = ColourDocument();
        document.inputs = BayesInput(
            "colour", PairCounts("red", FruitCounts(none, "3")) + PairCounts("green", FruitCounts("2", "1")));
        ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), Shares({4 * 0.001, 5 * 3.0 / 4}));
    }
    EXPECT_THAT(RefusalOf(WeighingPears(Gaussian("150", "none"))), StartsWith("9: "));
}

TEST(ProducersSpellings, OfNoWidthSayThatNothingIsKnown) {
    const std::vector<double> expected = Shares({3 * GaussianDensity(190, 200, 400), 0.001});
    for (const std::string& distribution :
         {Gaussian("190", "0"), Gaussian("190", "1e-400"), Gaussian("190", "0." + std::string(400, '0') + "1"),
          Uniform("190", "190")}) {
        ExpectProbabilities(ScoreCase(WeighingPears(distribution), {{"weight", "190"}}), expected);
    }
    EXPECT_THAT(RefusalOf(WeighingPears(Gaussian("190", "1e400"))), StartsWith("9: "));
}

TEST(ProducersSpellings, OfNamesMayDifferInBlanksOnEitherSide) {
    StandardDocument document = ColourDocument();
    document.dataFields = DataField(" colour", FieldType::Texts, ValueElements({"red", "green"}));
    ExpectProbabilities(ScoreCase(document, {{" colour", "red"}}), sharesOfRed);
    EXPECT_EQ(ScoreCase(document, {{" colour", "blue"}}).facts.field, " colour");
    document.target = DataField("fruit ", FieldType::Texts, ValueElement("apple") + ValueElement("pear"));
    document.transformations =
        XmlElement("TransformationDictionary", "", DerivedText(" shade", Apply("lowercase", FieldRef("colour"))));
    document.inputs = Replaced(document.inputs, "colour", "shade ");
    document.miningFields += MiningField("shade");
    document.output = OutputField("shade", "transformedValue", FieldRef("colour "));
    const ScoredCase scored = ScoreCase(document, {{" colour", "red"}});
    ExpectProbabilities(scored, sharesOfRed);
    EXPECT_EQ(scored.outputs.at("shade"), OutputValue(std::string("red")));
}

TEST(ProducersSpellings, OfNamesAreTakenToTheLetter_WhereThatTellsTwoFieldsApart) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField(" colour", FieldType::Texts);
    document.miningFields += MiningField(" colour");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}, {" colour", "green"}}), sharesOfRed);
    document.inputs = Replaced(document.inputs, "colour", "colour ");
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}, {" colour", "green"}}), sharesOfRed);
    document.dataFields = Replaced(document.dataFields, "\"colour\"", "\"  colour\"");
    document.miningFields = Replaced(document.miningFields, "\"colour\"", "\"  colour\"");
    EXPECT_THAT(RefusalOf(document), StartsWith("7: The input \"colour \" is no field."));
    document.dataFields = DataField(" colour", FieldType::Texts);
    document.miningFields = MiningField(" colour");
    document.transformations =
        XmlElement("TransformationDictionary", "", DerivedText("colour", Apply("lowercase", FieldRef(" colour"))));
    document.inputs = ColourDocument().inputs;
    ExpectProbabilities(ScoreCase(document, {{" colour", "RED"}}), sharesOfRed);
}

TEST(ProducersSpellings, OfBinsMayBeWords_WhereTheirFieldIsSaidToHoldNumbers) {
    StandardDocument document = ColourDocument();
    document.dataFields = DataField("age", FieldType::Bins);
    document.miningFields = MiningField("age");
    const auto binned = [](const std::string& type, const std::string& first) {
        return XmlElement(
            "DerivedField",
            Attribute("name", "bins") + Attribute("optype", "categorical") + Attribute("dataType", type),
            XmlElement("Discretize", Attribute("field", "age"),
                       DiscretizeBin(first, "closedOpen", "0", "18") + DiscretizeBin("2", "closedOpen", "18", "65")));
    };
    const auto counted = [](const std::string& field, const std::string& first, const std::string& second) {
        return BayesInput(field, PairCounts(first, FruitCounts("3", "1")) + PairCounts(second, FruitCounts("1", "4")));
    };
    for (const std::string type : {"double", "integer"}) {
        for (const std::string list : {"LocalTransformations", "TransformationDictionary"}) {
            document.transformations.clear();
            document.inputs = counted(" bins", "young", "2");
            const std::string fields = XmlElement(list, "", binned(type, "young"));
            const bool isLocal = list == "LocalTransformations";
            if (!isLocal) document.transformations = fields;
            const std::string text =
                isLocal ? Replaced(document.Text(), "<BayesInputs>", fields + "<BayesInputs>") : document.Text();
            ExpectProbabilities(ScoreCase(text, {{"age", "17"}}), sharesOfRed);
            ExpectProbabilities(ScoreCase(text, {{"age", "18"}}), sharesOfGreen);
        }
    }
    // Numbers stay numbers.
    document.transformations = XmlElement("TransformationDictionary", "", binned("double", "1"));
    document.inputs = counted("bins", "1.0", "2.0");
    ExpectProbabilities(ScoreCase(document, {{"age", "17"}}), sharesOfRed);
}

TEST(ProducersSpellings, OfTheMissingNumberAreAValueLikeAnother) {
    StandardDocument target = ColourDocument();
    target.target = DataField("fruit", FieldType::Numbers, ValueElements({"0", "1", missingNumber}));
    target.inputs = BayesInput("colour", PairCounts("red", TargetValueCounts(TargetValueCount("0", "3"))));
    target.targetCounts = TargetValueCount("0", "3") + TargetValueCount("1", "4");
    ExpectProbabilities(ScoreCase(target, {{"colour", ""}}), Shares({3, 4, 0}));
    target.target = DataField("fruit", FieldType::Numbers);
    target.targetCounts += TargetValueCount(missingNumber, "1");
    ExpectProbabilities(ScoreCase(target, {{"colour", ""}}), Shares({3, 4, 1}));

    StandardDocument input = ColourDocument();
    input.dataFields = DataField("colour", FieldType::Numbers, ValueElements({"1", missingNumber}));
    input.inputs =
        BayesInput("colour", PairCounts("1", FruitCounts("3", "1")) + PairCounts("2", FruitCounts("1", "4")));
    ExpectProbabilities(ScoreCase(input, {{"colour", "1"}}), sharesOfRed);
}

}  // namespace
}  // namespace nbscore::test

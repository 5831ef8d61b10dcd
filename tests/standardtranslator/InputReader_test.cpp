#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using ::testing::StartsWith;

const std::string inputPath = "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]";

/// The document of weights with these statistics.
StandardDocument Weighing(const std::string& apples, const std::string& pears) {
    StandardDocument document;
    document.inputs = DensityInput("weight", TargetValueStat("apple", apples) + TargetValueStat("pear", pears));
    return document;
}

TEST(StandardInput, HasSharesOfCounts) {
    ExpectProbabilities(ScoreCase(ColourDocument(), {{"colour", "red"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(ColourDocument(), {{"colour", "green"}}), sharesOfGreen);
    ExpectProbabilities(ScoreCase(ColourDocument(), {{"colour", ""}}), sharesOfNothing);
}

TEST(StandardInput, HasTheThresholdInThePlaceOfNoCount) {
    StandardDocument document = ColourDocument();
    document.inputs = BayesInput("colour", PairCounts("red", FruitCounts("NaN", "3.0")) +
                                               PairCounts("green", TargetValueCounts(TargetValueCount("apple", "2"))));
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), Shares({4 * 0.001, 5}));
    ExpectProbabilities(ScoreCase(document, {{"colour", "green"}}), Shares({4, 5 * 0.001}));
}

TEST(StandardInput, HasDensities) {
    ExpectProbabilities(ScoreCase(StandardDocument(), {{"weight", "170"}}),
                        Shares({3 * GaussianDensity(170, 200, 400), GaussianDensity(170, 150, 100)}));
    const auto any = [](const std::string& mean, const std::string& variance) {
        return XmlElement("AnyDistribution", Attribute("mean", mean) + Attribute("variance", variance));
    };
    ExpectProbabilities(ScoreCase(Weighing(any("200", "400"), any("150", "100")), {{"weight", "170"}}),
                        Shares({3 * GaussianDensity(170, 200, 400), GaussianDensity(170, 150, 100)}));
    ExpectProbabilities(ScoreCase(Weighing(Poisson("2"), Poisson("1")), {{"weight", "3"}}),
                        Shares({3 * 8 * std::exp(-2.0), std::exp(-1.0)}));
    const auto uniform = [](const std::string& lower, const std::string& upper) {
        return XmlElement("UniformDistribution", Attribute("lower", lower) + Attribute("upper", upper));
    };
    ExpectProbabilities(ScoreCase(Weighing(uniform("0", "10"), uniform("5", "9")), {{"weight", "7"}}),
                        Shares({3 * 0.1, 0.25}));
}

TEST(StandardInput, HasTheThreshold_WhereNothingIsKnownOfACategory) {
    StandardDocument document;
    document.inputs = DensityInput("weight", TargetValueStat("apple", Gaussian("200", "400")));
    const std::vector<double> expected = Shares({3 * GaussianDensity(190, 200, 400), 0.001});
    ExpectProbabilities(ScoreCase(document, {{"weight", "190"}}), expected);
    ExpectProbabilities(ScoreCase(Weighing(Gaussian("200", "400"), Gaussian("NaN", "NaN")), {{"weight", "190"}}),
                        expected);
}

TEST(StandardInput, IsRefused_WhereItsDistributionIsNone) {
    const std::string stat = inputPath + "/TargetValueStats[1]/TargetValueStat[1]";
    EXPECT_EQ(RefusalOf(Weighing("", Gaussian("1", "1"))), "1: The <TargetValueStat> has no distribution. " + stat);
    EXPECT_EQ(RefusalOf(Weighing(Gaussian("1", "-1"), "")),
              "5: The variance of <GaussianDistribution> is below zero: -1. " + stat + "/GaussianDistribution[1]");
    EXPECT_EQ(RefusalOf(Weighing(XmlElement("UniformDistribution", Attribute("lower", "2") + Attribute("upper", "1")),
                                 Poisson("1"))),
              "5: The <UniformDistribution> does not begin below its end. " + stat + "/UniformDistribution[1]");
    EXPECT_THAT(RefusalOf(Weighing("<LogNormalDistribution/>", Poisson("1"))),
                StartsWith("1: <LogNormalDistribution> is not understood in <TargetValueStat>"));
    EXPECT_THAT(RefusalOf(Weighing(Gaussian("1", "1") + Poisson("1"), "")),
                StartsWith("1: <PoissonDistribution> is not understood in <TargetValueStat>"));
}

TEST(StandardInput, KnowsTheValuesThatAreCounted_WhetherOrNotTheyAreDeclared) {
    StandardDocument document = ColourDocument();
    document.dataFields = DataField("colour", FieldType::Texts);
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    const ScoredCase unknown = ScoreCase(document, {{"colour", "blue"}});
    ExpectProbabilities(unknown, sharesOfNothing);
    EXPECT_THAT(unknown.unknown, ElementsAre(Pair("colour", "blue")));
}

TEST(StandardInput, KnowsNumbersHoweverTheyAreWritten) {
    StandardDocument document = ColourDocument();
    document.dataFields = DataField("colour", FieldType::Numbers, ValueElements({"0.0", "1.0"}));
    document.inputs =
        BayesInput("colour", PairCounts("1.0", FruitCounts("3", "1")) + PairCounts("0", FruitCounts("1", "4")));
    ExpectProbabilities(ScoreCase(document, {{"colour", "1"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(document, {{"colour", "0.00"}}), sharesOfGreen);
}

TEST(StandardInput, HasTheDeclaredValue_WhereBlanksStandAroundTheCountedOne) {
    StandardDocument document = ColourDocument();
    document.inputs =
        BayesInput(" colour ", PairCounts(" red ", FruitCounts("3", "1")) + PairCounts("green", FruitCounts("1", "4")));
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
}

const std::string ageBins = DiscretizeBin("old", "closedOpen", "40", "65") +
                            DiscretizeBin("young", "closedOpen", "0", "18") +
                            DiscretizeBin("ancient", "closedClosed", "65", "120");

StandardDocument AgeDocument(const std::string& discretizeAttributes = "") {
    StandardDocument document = ColourDocument();
    document.dataFields = DataField("age", FieldType::Bins);
    document.miningFields = MiningField("age");
    const std::string own =
        XmlElement("DerivedField", Attribute("optype", "categorical") + Attribute("dataType", "string"),
                   XmlElement("Discretize", Attribute("field", "age") + discretizeAttributes, ageBins));
    document.inputs =
        BayesInput("age", own + PairCounts("young", FruitCounts("3", "1")) + PairCounts("old", FruitCounts("1", "4")));
    return document;
}

TEST(StandardInput, HasBinsOfAnyClosureInAnyOrderWithGaps) {
    const std::string text = AgeDocument().Text();
    ExpectProbabilities(ScoreCase(text, {{"age", "0"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(text, {{"age", "18"}}), sharesOfNothing);
    ExpectProbabilities(ScoreCase(text, {{"age", "40"}}), sharesOfGreen);
    const ScoredCase uncounted = ScoreCase(text, {{"age", "65"}});
    ExpectProbabilities(uncounted, sharesOfNothing);
    EXPECT_THAT(uncounted.unknown, ElementsAre(Pair("age", "ancient")));
}

TEST(StandardInput, HasABinForWhatIsMissingOrOutside) {
    const std::string text = AgeDocument(Attribute("defaultValue", "old") + Attribute("mapMissingTo", "young")).Text();
    ExpectProbabilities(ScoreCase(text, {{"age", "20"}}), sharesOfGreen);
    ExpectProbabilities(ScoreCase(text, {{"age", ""}}), sharesOfRed);
}

TEST(StandardInput, NumbersItsBins_WhereAllCountsDo) {
    StandardDocument document = AgeDocument();
    const auto counted = [&](const std::string& first, const std::string& second) {
        const std::string own = XmlElement(
            "DerivedField",
            Attribute("name", "bins") + Attribute("optype", "categorical") + Attribute("dataType", "integer"),
            XmlElement(
                "Discretize", Attribute("field", "age"),
                DiscretizeBin(first, "closedOpen", "0", "18") + DiscretizeBin(second, "closedOpen", "18", "65")));
        document.inputs =
            BayesInput("age", own + PairCounts(first + (first == "0" ? ".0" : ""), FruitCounts("3", "1")) +
                                  PairCounts(second, FruitCounts("1", "4")));
        return document.Text();
    };
    ExpectProbabilities(ScoreCase(counted("0", "1"), {{"age", "17"}}), sharesOfRed);
    ExpectProbabilities(ScoreCase(counted("young", "old"), {{"age", "17"}}), sharesOfRed);
}

TEST(StandardInput, IsComputedByAnyExpression) {
    StandardDocument document;
    const std::string own = XmlElement(
        "DerivedField", Attribute("name", "half") + Attribute("optype", "continuous") + Attribute("dataType", "double"),
        Apply("/", FieldRef("weight") + Constant("2")));
    document.inputs = BayesInput("half", own + XmlElement("TargetValueStats", "",
                                                          TargetValueStat("apple", Gaussian("100", "400")) +
                                                              TargetValueStat("pear", Gaussian("75", "100"))));
    ExpectProbabilities(ScoreCase(document, {{"weight", "170"}}),
                        Shares({3 * GaussianDensity(85, 100, 400), GaussianDensity(85, 75, 100)}));
}

TEST(StandardInput, MayBeADerivedFieldOfTheModelOrTheDocument) {
    const std::string half = DerivedNumber("half", Apply("/", FieldRef("weight") + Constant("2")));
    StandardDocument document;
    document.inputs = DensityInput(
        "half", TargetValueStat("apple", Gaussian("100", "400")) + TargetValueStat("pear", Gaussian("75", "100")));
    const std::vector<double> expected = Shares({3 * GaussianDensity(85, 100, 400), GaussianDensity(85, 75, 100)});
    document.transformations = XmlElement("TransformationDictionary", "", half);
    ExpectProbabilities(ScoreCase(document, {{"weight", "170"}}), expected);

    document.transformations =
        XmlElement("TransformationDictionary", "", DefineFunction("halved", Apply("/", FieldRef("p") + Constant("2"))));
    const std::string local =
        XmlElement("LocalTransformations", "", DerivedNumber("half", Apply("halved", FieldRef("weight"))));
    ExpectProbabilities(
        ScoreCase(Replaced(document.Text(), "<BayesInputs>", local + "<BayesInputs>"), {{"weight", "170"}}), expected);
}

TEST(StandardInput, MayReadAFieldThatTheSchemaDoesNotList) {
    StandardDocument document = ColourDocument();
    document.miningFields.clear();
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);
    EXPECT_EQ(ScoreCase(document, {{"colour", "blue"}}).facts.outcome, CaseOutcome::InvalidValue);
}

TEST(StandardInput, StandsInAnExtensionToo) {
    StandardDocument document = ColourDocument();
    const std::string expected = document.inputs;
    document.inputs = XmlElement("Extension", "", document.inputs);
    ExpectProbabilities(ScoreCase(document, {{"colour", "red"}}), sharesOfRed);

    StandardDocument weights;
    weights.inputs = Replaced(Replaced(weights.inputs, "<TargetValueStats>", "<Extension><TargetValueStats>"),
                              "</TargetValueStats>", "</TargetValueStats></Extension>");
    ExpectProbabilities(ScoreCase(weights, {{"weight", "170"}}),
                        ScoreCase(StandardDocument(), {{"weight", "170"}}).probabilities);
}

TEST(StandardInput, IsRefused_WhereItStandsSoDeepThatItsMeaningIsNotClear) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField("size", FieldType::Texts);
    const std::string second = BayesInput("size", PairCounts("big", FruitCounts("3", "1")));
    const std::string deep = XmlElement("Extension", "", XmlElement("Group", "", second));
    document.inputs += deep;
    EXPECT_THAT(RefusalOf(document), StartsWith("1: <BayesInput> is not understood in <Group>"));
    EXPECT_THAT(RefusalOf(Replaced(ColourDocument().Text(), "<BayesInputs>", deep + "<BayesInputs>")),
                StartsWith("1: <BayesInput> is not understood in <Group>"));

    StandardDocument counts = ColourDocument();
    counts.inputs = Replaced(counts.inputs, "<PairCounts",
                             "<Extension><Group><PairCounts value='blue'/></Group></Extension><PairCounts");
    EXPECT_THAT(RefusalOf(counts), StartsWith("1: <PairCounts> is not understood in <Group>"));
}

TEST(StandardInput, ThatOnlyFillsAPlaceIsLeftOut) {
    StandardDocument document;
    document.dataFields += DataField("DiscretePlaceHolder", FieldType::Texts, ValueElement("pseudoValue"));
    document.miningFields += MiningField("DiscretePlaceHolder");
    const std::vector<double> expected = ScoreCase(document, {{"weight", "170"}}).probabilities;
    document.inputs =
        BayesInput("DiscretePlaceHolder", PairCounts("pseudoValue", FruitCounts("7", "1"))) + document.inputs;
    const ScoredCase scored = ScoreCase(document, {{"weight", "170"}, {"DiscretePlaceHolder", "pseudoValue"}});
    ExpectProbabilities(scored, expected);
    EXPECT_EQ(scored.facts.usable, 1U);
    document.dataFields = StandardDocument().dataFields;
    ExpectProbabilities(ScoreCase(document, {{"weight", "170"}}), expected);
}

TEST(StandardInput, IsRefused_WhereItCannotBeRead) {
    StandardDocument document = ColourDocument();
    const auto refusalWith = [&](const std::string& inputs) {
        document.inputs = inputs;
        return RefusalOf(document);
    };
    const std::string counts = PairCounts("red", FruitCounts("3", "1"));
    EXPECT_EQ(refusalWith(BayesInput("color", counts)), "7: The input \"color\" is no field. " + inputPath);
    EXPECT_EQ(refusalWith(BayesInput("fruit", counts)), "12: The input \"fruit\" is the target. " + inputPath);
    EXPECT_THAT(refusalWith(BayesInput("colour", counts) + BayesInput("colour", counts)),
                StartsWith("12: The input \"colour\" is there twice. "));
    EXPECT_EQ(refusalWith(BayesInput("colour", "")),
              "1: The input \"colour\" has neither PairCounts nor TargetValueStats. " + inputPath);
    EXPECT_EQ(refusalWith(BayesInput("colour", counts + "<TargetValueStats/>")),
              "12: The input \"colour\" has both PairCounts and TargetValueStats. " + inputPath);
    EXPECT_EQ(refusalWith(DensityInput("colour", "")),
              "5: The input \"colour\" has TargetValueStats, and its field holds texts. " + inputPath);
    EXPECT_EQ(refusalWith(BayesInput("colour", counts + counts)),
              "12: The value \"red\" is there twice. " + inputPath + "/PairCounts[2]");
    EXPECT_THAT(refusalWith(BayesInput("colour", counts + "<Other/>")),
                StartsWith("1: <Other> is not understood in <BayesInput>"));
    EXPECT_THAT(refusalWith("<Other/>" + BayesInput("colour", counts)),
                StartsWith("1: <Other> is not understood in <BayesInputs>"));
    EXPECT_EQ(refusalWith(BayesInput("colour", PairCounts("red", ""))),
              "1: Element <TargetValueCounts> was expected here. " + inputPath + "/PairCounts[1]");
    EXPECT_THAT(refusalWith(Replaced(BayesInput("colour", counts), "<PairCounts ", "<PairCounts weight='2' ")),
                StartsWith("5: The attribute \"weight\" of <PairCounts> is not understood"));
}

TEST(StandardInput, IsRefused_WhereAFieldOfItsOwnCannotBeRead) {
    StandardDocument document = AgeDocument();
    const std::string text = Replaced(document.Text(), "<Discretize field=\"age\"", "<Discretize field=\"years\"");
    EXPECT_EQ(RefusalOf(text), "8: \"years\" is no field. " + inputPath + "/DerivedField[1]/Discretize[1]");
}

TEST(StandardInput, IsRefused_WhereItsTableTakesTooMuchMemory) {
    StandardDocument document = ColourDocument();
    std::string values;
    for (int i = 0; i < 2000; ++i)
        values += ValueElement("fruit" + std::to_string(i));
    document.target = DataField("fruit", FieldType::Texts, values);
    document.targetCounts = TargetValueCount("fruit1", "1");
    std::string counts;
    for (int i = 0; i < 2000; ++i)
        counts += PairCounts(std::to_string(i), TargetValueCounts(""));
    document.dataFields = DataField("colour", FieldType::Texts);
    document.inputs = BayesInput("colour", counts);
    StandardTranslator translator;
    Limits limits;
    limits.maxMemory = 50'000'000;
    translator.SetLimits(limits);
    const ParseOutcome outcome = ParseWith(translator, document.Text());
    ASSERT_TRUE(outcome.refusal);
    EXPECT_THAT(outcome.refusal->GetMessage(), StartsWith("The document's count tables and categories need more"));
}

}  // namespace
}  // namespace nbscore::test

// What a model read by the standard's rule writes about itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string DisplayOf(const StandardDocument& document) {
    const ParseOutcome outcome = ParseStandard(document);
    if (!outcome.model) return outcome.refusal->GetMessage();
    std::ostringstream text;
    outcome.model->Display(text);
    return text.str();
}

/// What is displayed of a derived text with this expression.
std::string TextOf(const std::string& expression) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField("weight", FieldType::Bins);
    document.miningFields += MiningField("weight");
    document.transformations =
        XmlElement("TransformationDictionary", "",
                   DefineFunction("twice", Apply("+", FieldRef("p") + FieldRef("p"))) + DerivedText("d", expression));
    const std::string display = DisplayOf(document);
    const std::string before = "\td: categorical, text\n\t\t= ";
    const std::size_t begin = display.find(before);
    if (begin == std::string::npos) return display;
    return display.substr(begin + before.size(), display.find('\n', begin + before.size()) - begin - before.size());
}

TEST(DisplayedModel, HasItsCategoriesApart_TextsInQuotes) {
    EXPECT_THAT(DisplayOf(ColourDocument()), HasSubstr("Target categories: \"apple\" \"pear\"\n"));
    StandardDocument numbers;
    numbers.target = DataField("fruit", FieldType::Numbers, ValueElement("5") + ValueElement("10"));
    numbers.inputs = DensityInput("weight", TargetValueStat("5", Gaussian("200", "400")));
    numbers.targetCounts = TargetValueCount("5", "3") + TargetValueCount("10", "1");
    EXPECT_THAT(DisplayOf(numbers), HasSubstr("Target categories: 5 10\n"));
}

TEST(DisplayedModel, TellsHowEachFieldIsTreated) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField("weight", FieldType::Bins) + DataField("size", FieldType::Bins) +
                           DataField("taste", FieldType::Texts) + DataField("form", FieldType::Texts);
    document.miningFields =
        MiningField("colour") +
        TreatedField("weight", Attribute("outliers", "asExtremeValues") + Attribute("lowValue", "0") +
                                   Attribute("highValue", "9") + Attribute("missingValueReplacement", "4.5")) +
        TreatedField("size", Attribute("outliers", "asMissingValues") + Attribute("highValue", "7") +
                                 Attribute("invalidValueTreatment", "asIs")) +
        TreatedField("taste", Attribute("invalidValueTreatment", "asMissing") +
                                  Attribute("missingValueTreatment", "returnInvalid")) +
        TreatedField("form",
                     Attribute("invalidValueTreatment", "asValue") + Attribute("invalidValueReplacement", "round"));
    EXPECT_THAT(
        DisplayOf(document),
        HasSubstr("Treated fields:\n"
                  "\tcolour: an invalid value ends the case; a missing value is left out\n"
                  "\tweight: a number below 0 is 0, one above 9 is 9; an invalid value ends the case; a missing "
                  "value is 4.5\n"
                  "\tsize: a number above 7 is missing; an invalid value is taken as it is; a missing value is "
                  "left out\n"
                  "\ttaste: an invalid value is missing; a missing value ends the case\n"
                  "\tform: an invalid value is \"round\"; a missing value is left out\n"));
}

TEST(DisplayedModel, TellsTheProbabilitiesOfCasesWithoutAResult) {
    EXPECT_THAT(DisplayOf(ColourDocument()), Not(HasSubstr("without a result")));
    StandardDocument document = ColourDocument();
    const std::string targets = XmlElement(
        "Targets", "",
        XmlElement("Target", Attribute("field", "fruit"),
                   XmlElement("TargetValue", Attribute("value", "apple") + Attribute("priorProbability", "0.75")) +
                       XmlElement("TargetValue", Attribute("value", "pear") + Attribute("priorProbability", "0.25"))));
    const ParseOutcome outcome = ParseStandard(Replaced(document.Text(), "<BayesInputs>", targets + "<BayesInputs>"));
    ASSERT_TRUE(outcome.model);
    std::ostringstream text;
    outcome.model->Display(text);
    EXPECT_THAT(text.str(), HasSubstr("Probabilities of a case without a result: 0.75 0.25 \n"));
}

TEST(DisplayedModel, ShowsTheBinsOfAnInputsOwnField) {
    StandardDocument document = ColourDocument();
    document.dataFields += DataField("age", FieldType::Bins);
    document.miningFields += MiningField("age");
    const std::string bins =
        DiscretizeBin("young", "closedOpen", "0", "18") + DiscretizeBin("old", "closedClosed", "18", std::nullopt);
    document.inputs += BayesInput(
        "age", XmlElement("DerivedField", Attribute("optype", "categorical") + Attribute("dataType", "string"),
                          XmlElement("Discretize", Attribute("field", "age"), bins)) +
                   PairCounts("young", FruitCounts("1", "2")) + PairCounts("old", FruitCounts("3", "3")));
    EXPECT_THAT(DisplayOf(document), HasSubstr("Derived fields:\n\t(age): categorical, text\n"
                                               "\t\t= Discretize(age, [0, 18) is \"young\", [18, inf] is \"old\")\n"));
}

TEST(DisplayedModel, ShowsExpressionsOnOneLine) {
    EXPECT_EQ(TextOf(Apply("if", Apply("greaterThan", FieldRef("weight") + Constant("9")) + TextConstant("b\n\"") +
                                     FieldRef("colour"))),
              "if(greaterThan(weight, 9), \"b?\"\", colour)");
    EXPECT_EQ(TextOf(Apply("twice", Constant("3"))), "twice(3)");
    EXPECT_EQ(TextOf(XmlElement("FieldRef", Attribute("field", "colour") + Attribute("mapMissingTo", "none"))),
              "colour(mapMissingTo \"none\")");
    EXPECT_EQ(TextOf(XmlElement("Discretize", Attribute("field", "weight") + Attribute("defaultValue", "rest"),
                                DiscretizeBin("small", "openClosed", std::nullopt, "1"))),
              "Discretize(weight, (-inf, 1] is \"small\", defaultValue \"rest\")");
    EXPECT_EQ(
        TextOf(XmlElement("NormContinuous", Attribute("field", "weight") + Attribute("outliers", "asExtremeValues"),
                          XmlElement("LinearNorm", Attribute("orig", "0") + Attribute("norm", "1")) +
                              XmlElement("LinearNorm", Attribute("orig", "5") + Attribute("norm", "2")))),
        "NormContinuous(weight, 0 is 1, 5 is 2, outliers \"asExtremeValues\")");
    EXPECT_EQ(TextOf(XmlElement("NormDiscrete", Attribute("field", "colour") + Attribute("value", "red"))),
              "NormDiscrete(colour, value \"red\")");
    EXPECT_EQ(TextOf(MapValues(FieldColumnPair("colour", "c"),
                               Row(Cell("c", "red") + Cell("out", "r")) + Row(Cell("c", "green") + Cell("out", "g")))),
              "MapValues(colour in column \"c\", 2 rows, outputColumn \"out\")");
    EXPECT_EQ(TextOf(XmlElement("TextIndex", Attribute("textField", "colour") + Attribute("tokenize", "false"),
                                TextConstant("red"))),
              "TextIndex(\"red\", textField \"colour\", tokenize \"false\")");
}

TEST(DisplayedModel, ShowsTheFunctionsOfTheDocument) {
    StandardDocument document = ColourDocument();
    document.transformations =
        XmlElement("TransformationDictionary", "", DefineFunction("twice", Apply("+", FieldRef("p") + FieldRef("p"))));
    EXPECT_THAT(DisplayOf(document), HasSubstr("Derived fields:\n\tfunction twice(p) = +(p, p)\n"));
}

TEST(DisplayedModel, ShowsWhatTheOutputAsksFor) {
    EXPECT_THAT(DisplayOf(ColourDocument()), Not(HasSubstr("Output fields")));
    StandardDocument document = ColourDocument();
    const auto field = [](const std::string& name, const std::string& attributes) {
        return XmlElement("OutputField", Attribute("name", name) + attributes);
    };
    document.output = OutputField("verdict", "predictedValue") + OutputField("shown", "predictedDisplayValue") +
                      field("p", Attribute("feature", "probability")) +
                      field("q", Attribute("feature", "probability") + Attribute("value", "pear") +
                                     Attribute("isFinalResult", "false")) +
                      OutputField("folder", "decision",
                                  Apply("if", Apply("greaterThan", FieldRef("q") + Constant("0.5")) +
                                                  TextConstant("in") + TextConstant("out")));
    EXPECT_THAT(DisplayOf(document), HasSubstr("Output fields:\n"
                                               "\tverdict: the predicted category\n"
                                               "\tshown: what is shown for the predicted category, of \"apple\" "
                                               "\"pear\"\n"
                                               "\tp: probability of the predicted category\n"
                                               "\tq (no column): probability of \"pear\"\n"
                                               "\tfolder: if(greaterThan(q, 0.5), \"in\", \"out\")\n"));
}

}  // namespace
}  // namespace nbscore::test

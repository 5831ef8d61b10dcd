#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

const std::string fieldPath = "/PMML/NaiveBayesModel[1]/Output[1]/OutputField[1]";

StandardDocument WithOutput(const std::string& fields) {
    StandardDocument document = ColourDocument();
    document.output = fields;
    return document;
}

std::string Field(const std::string& name, const std::string& attributes = "", const std::string& content = "") {
    return XmlElement("OutputField", Attribute("name", name) + attributes, content);
}

std::string Feature(const std::string& feature, const std::string& value = "") {
    return Attribute("feature", feature) + (value.empty() ? "" : Attribute("value", value));
}

std::string Computed(const std::string& name, const std::string& dataType, const std::string& expression,
                     const std::string& feature = "transformedValue") {
    return Field(name, Feature(feature) + Attribute("optype", "categorical") + Attribute("dataType", dataType),
                 expression);
}

double NumberIn(const ScoredCase& scored, const std::string& column) {
    return std::get<double>(scored.outputs.at(column));
}

std::string TextIn(const ScoredCase& scored, const std::string& column) {
    return std::get<std::string>(scored.outputs.at(column));
}

bool IsEmpty(const ScoredCase& scored, const std::string& column) {
    return std::holds_alternative<std::monostate>(scored.outputs.at(column));
}

TEST(OutputFields, NameTheColumnsInTheirOrder) {
    const ParseOutcome outcome = ParseStandard(
        WithOutput(Field("z", Feature("probability", "pear")) + Field("a") +
                   Field("hidden", Feature("probability", "apple") + Attribute("isFinalResult", "false")) +
                   Computed("sum", "double", Apply("+", FieldRef("z") + FieldRef("hidden")))));
    ASSERT_TRUE(outcome.model);
    const auto columns = dynamic_cast<const ModelOutputs&>(*outcome.model).GetOutputColumns();
    std::vector<std::string> names;
    std::vector<bool> areNumbers;
    for (const OutputColumn& column : columns) {
        names.push_back(column.name);
        areNumbers.push_back(column.isNumber);
    }
    EXPECT_THAT(names, ElementsAre("z", "a", "sum"));
    EXPECT_THAT(areNumbers, ElementsAre(true, false, true));
    const ScoredCase scored = ScoreCase(*outcome.model, {{"colour", "red"}});
    EXPECT_DOUBLE_EQ(NumberIn(scored, "z"), sharesOfRed[1]);
    EXPECT_EQ(TextIn(scored, "a"), "apple");
    EXPECT_DOUBLE_EQ(NumberIn(scored, "sum"), 1.0);
}

TEST(OutputFields, AreNone_WhereTheDocumentHasNoOutput) {
    const ParseOutcome outcome = ParseStandard(ColourDocument());
    ASSERT_TRUE(outcome.model);
    EXPECT_TRUE(dynamic_cast<const ModelOutputs&>(*outcome.model).GetOutputColumns().empty());
}

TEST(OutputFields, AreOfThePredictedValue_WhereTheyNameNone) {
    const StandardDocument document = WithOutput(Field("p", Feature("probability")) + Field("r", Feature("residual")));
    const ScoredCase red = ScoreCase(document, {{"colour", "red"}, {"fruit", "apple"}});
    EXPECT_DOUBLE_EQ(NumberIn(red, "p"), sharesOfRed[0]);
    EXPECT_DOUBLE_EQ(NumberIn(red, "r"), 1 - sharesOfRed[0]);
    EXPECT_DOUBLE_EQ(NumberIn(ScoreCase(document, {{"colour", "red"}, {"fruit", "pear"}}), "r"), -sharesOfRed[0]);
}

TEST(OutputFields, HaveAResidual_WhereTheActualValueIsKnown) {
    const StandardDocument document = WithOutput(Field("r", Feature("residual", "pear")));
    EXPECT_DOUBLE_EQ(NumberIn(ScoreCase(document, {{"colour", "red"}, {"fruit", "pear"}}), "r"), 1 - sharesOfRed[1]);
    EXPECT_DOUBLE_EQ(NumberIn(ScoreCase(document, {{"colour", "red"}, {"fruit", "apple"}}), "r"), -sharesOfRed[1]);
    EXPECT_TRUE(IsEmpty(ScoreCase(document, {{"colour", "red"}, {"fruit", ""}}), "r"));
    const ParseOutcome outcome = ParseStandard(document);
    ASSERT_TRUE(outcome.model);
    EXPECT_THAT(dynamic_cast<const ModelOutputs&>(*outcome.model).GetOptionalFields(), ElementsAre("fruit"));
}

TEST(OutputFields, ShowWhatStandsForTheValue) {
    StandardDocument document = WithOutput(Field("d", Feature("predictedDisplayValue")));
    document.target =
        DataField("fruit", FieldType::Texts, "<Value value=\"apple\" displayValue=\"Apple\"/><Value value=\"pear\"/>");
    EXPECT_EQ(TextIn(ScoreCase(document, {{"colour", "red"}}), "d"), "Apple");
    EXPECT_EQ(TextIn(ScoreCase(document, {{"colour", "green"}}), "d"), "pear");
    const std::string targets =
        "<Targets><Target field=\"fruit\"><TargetValue value=\"apple\" displayValue=\"An apple\"/></Target></Targets>";
    const std::string text = Replaced(document.Text(), "<BayesInputs>", targets + "<BayesInputs>");
    EXPECT_EQ(TextIn(ScoreCase(text, {{"colour", "red"}}), "d"), "An apple");
}

TEST(OutputFields, AreNumbers_WhereTheTargetHoldsNumbersOrTheOutputSaysSo) {
    StandardDocument document = WithOutput(Field("plain") + Field("text", Attribute("dataType", "string")));
    document.target = DataField("fruit", FieldType::Numbers, ValueElements({"1", "2"}));
    document.inputs = BayesInput("colour", PairCounts("red", TargetValueCounts(TargetValueCount("1", "1"))));
    document.targetCounts = TargetValueCount("1", "1");
    const ScoredCase numbers = ScoreCase(document, {{"colour", "red"}});
    EXPECT_DOUBLE_EQ(NumberIn(numbers, "plain"), 1);
    EXPECT_EQ(TextIn(numbers, "text"), "1");

    document.target = DataField("fruit", FieldType::Texts, ValueElements({"1", "2"}));
    document.output = Field("number", Attribute("dataType", "integer")) + Field("plain");
    const ScoredCase texts = ScoreCase(document, {{"colour", "red"}});
    EXPECT_DOUBLE_EQ(NumberIn(texts, "number"), 1);
    EXPECT_EQ(TextIn(texts, "plain"), "1");
}

TEST(OutputFields, AreComputedFromOutputsAndFields) {
    StandardDocument document =
        WithOutput(Computed("verdict", "string",
                            "<Decisions><Decision value=\"keep\"/></Decisions>" +
                                Apply("if", Apply("greaterThan", FieldRef("loss") + Constant("0.2")) +
                                                TextConstant("keep") + TextConstant("sell")),
                            "decision") +
                   Computed("loss", "double", Apply("*", FieldRef("p") + FieldRef("half"))) +
                   Field("p", Feature("probability", "apple")));
    document.dataFields += DataField("weight", FieldType::Bins);
    document.miningFields += TreatedField("weight", Attribute("missingValueReplacement", "2"));
    document.transformations = XmlElement("TransformationDictionary", "",
                                          DerivedNumber("half", Apply("/", FieldRef("weight") + Constant("2"))));
    const ScoredCase scored = ScoreCase(document, {{"colour", "red"}, {"weight", "1"}});
    EXPECT_DOUBLE_EQ(NumberIn(scored, "loss"), sharesOfRed[0] / 2);
    EXPECT_EQ(TextIn(scored, "verdict"), "keep");
    EXPECT_DOUBLE_EQ(NumberIn(ScoreCase(document, {{"colour", "red"}, {"weight", ""}}), "loss"), sharesOfRed[0]);
}

TEST(OutputFields, AreSeenInTheirPlaces_WhereADataFieldHasTheSameName) {
    const StandardDocument document =
        WithOutput(Field("fruit") + Computed("again", "string", Apply("uppercase", FieldRef("fruit"))));
    EXPECT_EQ(TextIn(ScoreCase(document, {{"colour", "red"}, {"fruit", "pear"}}), "again"), "APPLE");
}

/// The document of weights with a derived field.
StandardDocument WithHalf(const std::string& output) {
    StandardDocument document;
    document.output = output;
    document.transformations = XmlElement("TransformationDictionary", "",
                                          DefineFunction("halved", Apply("/", FieldRef("p") + Constant("2"))) +
                                              DerivedNumber("half", Apply("halved", FieldRef("weight"))));
    return document;
}

TEST(OutputFields, LeaveTheDocumentsDerivedFieldsAsTheyAre_WhateverTheirNamesHide) {
    const ScoredCase scored = ScoreCase(
        WithHalf(Field("weight", Feature("probability", "apple")) + Computed("h", "double", FieldRef("half")) +
                 Computed("p", "double", Apply("halved", FieldRef("weight")))),
        {{"weight", "170"}});
    EXPECT_DOUBLE_EQ(NumberIn(scored, "h"), 85);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "p"), NumberIn(scored, "weight") / 2);
}

TEST(OutputFields, MayHaveTheNamesOfTheDocumentsFields_WhichTheirExpressionsRead) {
    const ParseOutcome outcome =
        ParseStandard(WithHalf(Computed("weight", "double", Apply("+", FieldRef("weight") + Constant("1"))) +
                               Computed("half", "double", Apply("+", FieldRef("half") + FieldRef("weight"))) +
                               Computed("again", "double", FieldRef("half"))));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    const ScoredCase scored = ScoreCase(*outcome.model, {{"weight", "170"}});
    EXPECT_DOUBLE_EQ(NumberIn(scored, "weight"), 171);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "half"), 85 + 171);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "again"), 85 + 171);
}

TEST(OutputFields, NameTheFieldsThatTheyRead_ThoughTheyHideThem) {
    StandardDocument document = WithHalf(Computed("size", "double", Apply("+", FieldRef("size") + FieldRef("third"))) +
                                         Field("length", Feature("probability")) +
                                         Computed("more", "double", Apply("+", FieldRef("length") + FieldRef("size"))));
    for (const std::string name : {"size", "length", "width"})
        document.dataFields += DataField(name, FieldType::Bins);
    document.transformations =
        Replaced(document.transformations, "<DerivedField",
                 DerivedNumber("third", Apply("/", FieldRef("width") + Constant("3"))) + "<DerivedField");
    const ParseOutcome outcome = ParseStandard(document);
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    EXPECT_THAT(dynamic_cast<const ModelOutputs&>(*outcome.model).GetOptionalFields(), ElementsAre("size", "width"));
    const ScoredCase scored = ScoreCase(*outcome.model, {{"weight", "170"}, {"size", "1"}, {"width", "6"}});
    EXPECT_DOUBLE_EQ(NumberIn(scored, "size"), 3);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "more"), 3 + NumberIn(scored, "length"));
}

TEST(OutputFields, MayStandInBothModels_WhereTheySayTheSame) {
    const std::string fields = Field("p", Feature("probability", "apple")) +
                               Computed("twice", "double", Apply("*", FieldRef("p") + Constant("2")));
    const auto inBoth = [&](const std::string& outer) {
        return InMiningModel(WithOutput(fields), OuterSchema(MiningField("colour")) + XmlElement("Output", "", outer));
    };
    const ScoredCase scored =
        ScoreCase(inBoth(Replaced(fields, "feature", "segmentId=\"1\" feature")), {{"colour", "red"}});
    EXPECT_EQ(scored.outputs.size(), 2U);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "p"), sharesOfRed[0]);
    EXPECT_DOUBLE_EQ(NumberIn(scored, "twice"), 2 * sharesOfRed[0]);
    EXPECT_THAT(RefusalOf(inBoth(Replaced(fields, "apple", "pear"))),
                StartsWith("12: The output field \"p\" is declared twice."));
    EXPECT_THAT(RefusalOf(inBoth(Replaced(fields, "Constant>2<", "Constant>3<"))),
                StartsWith("12: The output field \"twice\" is declared twice."));
}

TEST(OutputFields, AreEmpty_WhereACaseHasNoResult) {
    const StandardDocument document = WithOutput(
        Field("predicted") + Field("p", Feature("probability", "pear")) + Field("q", Feature("probability")) +
        Field("d", Feature("predictedDisplayValue")) + Field("r", Feature("residual", "pear")) +
        Field("w", Feature("warning")) + Computed("lost", "string", Apply("isMissing", FieldRef("p"))));
    const ScoredCase invalid = ScoreCase(document, {{"colour", "blue"}, {"fruit", "pear"}});
    for (const std::string column : {"predicted", "p", "q", "d", "r"})
        EXPECT_TRUE(IsEmpty(invalid, column)) << column;
    EXPECT_EQ(TextIn(invalid, "w"), "invalid value of colour");
    EXPECT_EQ(TextIn(invalid, "lost"), "true");
    const ScoredCase sound = ScoreCase(document, {{"colour", "red"}, {"fruit", "pear"}});
    EXPECT_TRUE(IsEmpty(sound, "w"));
    EXPECT_EQ(TextIn(sound, "lost"), "false");

    StandardDocument impossible = document;
    impossible.threshold = "0";
    impossible.inputs = BayesInput("colour", PairCounts("red", FruitCounts("0", "0")));
    EXPECT_EQ(TextIn(ScoreCase(impossible, {{"colour", "red"}, {"fruit", ""}}), "w"), "no category is possible");
}

TEST(OutputFields, AreRefused_WhereTheyAreNotUnderstood) {
    EXPECT_EQ(RefusalOf(WithOutput(Field("a", Feature("clusterId")))),
              "11: The output field \"a\" has the feature \"clusterId\", which is not supported. " + fieldPath);
    EXPECT_EQ(RefusalOf(WithOutput(Field("a", Attribute("targetField", "colour")))),
              "12: The output field \"a\" is of the target \"colour\", which is not the model's target. " + fieldPath);
    EXPECT_EQ(RefusalOf(WithOutput(Field("a", Feature("probability", "plum")))),
              "12: The output field \"a\" is of the value \"plum\", which the target does not have. It has \"apple\", "
              "\"pear\". " +
                  fieldPath);
    EXPECT_EQ(RefusalOf(WithOutput(Field("a") + Field("a"))),
              "12: The output field \"a\" is declared twice. /PMML/NaiveBayesModel[1]/Output[1]/OutputField[2]");
    EXPECT_THAT(RefusalOf(WithOutput(Field("a", Attribute("rank", "2")))),
                StartsWith("5: The attribute \"rank\" of <OutputField> is not understood"));
    EXPECT_THAT(RefusalOf(WithOutput(Field("a", Attribute("segmentId", "2")))),
                StartsWith("5: The attribute \"segmentId\" of <OutputField> is not understood"));
    EXPECT_THAT(RefusalOf(WithOutput(Field("a", "", FieldRef("colour")))),
                StartsWith("1: <FieldRef> is not understood in <OutputField>"));
    EXPECT_EQ(RefusalOf(WithOutput(Computed("a", "string", FieldRef("size")))),
              "8: \"size\" is no field. " + fieldPath + "/FieldRef[1]");
    EXPECT_THAT(RefusalOf(WithOutput(Computed("a", "string", ""))), StartsWith("1: "));
    EXPECT_THAT(RefusalOf(WithOutput(Computed("a", "string", FieldRef("a")))),
                StartsWith("12: The derived field \"a\" depends on itself."));
}

}  // namespace
}  // namespace nbscore::test

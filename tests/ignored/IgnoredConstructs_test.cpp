#include "ignored/IgnoredConstructs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cli/FruitDocument.h"
#include "support/TreeOf.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<IgnoredConstruct> FindIn(const std::string& text) {
    return FindIgnoredConstructs(*TreeOf(text));
}

/// "LINE: MESSAGE" of each.
std::vector<std::string> Ignored(const std::string& text) {
    std::vector<std::string> lines;
    for (const IgnoredConstruct& construct : FindIn(text)) {
        EXPECT_NE(construct.advice, "");
        lines.push_back(std::to_string(construct.place.line) + ": " + construct.message);
    }
    return lines;
}

/// Of the document of fruits, with a piece replaced.
std::vector<std::string> IgnoredWith(std::string_view piece, std::string_view replacement) {
    return Ignored(Replace(fruitDocument, piece, replacement));
}

const std::string colourField = "<MiningField name=\"colour\"";
const std::string weightField = "<MiningField name=\"weight\"";

std::vector<std::string> IgnoredOfColour(const std::string& attributes) {
    return IgnoredWith(colourField, colourField + attributes);
}

std::vector<std::string> IgnoredOfWeight(const std::string& attributes) {
    return IgnoredWith(weightField, weightField + attributes);
}

TEST(IgnoredConstructs, AreNone_WhenNothingInTheDocumentIsIgnored) {
    EXPECT_THAT(Ignored(fruitDocument), IsEmpty());
    EXPECT_THAT(Ignored("<PMML/>"), IsEmpty());
}

TEST(IgnoredConstructs, HaveThePathOfTheFirst) {
    const auto found = FindIn(Replace(fruitDocument, colourField, colourField + " missingValueReplacement=\"red\""));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().place.elementPath, "/PMML/NaiveBayesModel[1]/MiningSchema[1]/MiningField[1]");
    EXPECT_EQ(found.front().advice, "Replace missing values in the table before scoring.");
    EXPECT_TRUE(found.front().isWarning);
}

TEST(IgnoredConstructs, AdviseTheStandardsRule_WhereItHeedsThem) {
    const auto heeded = FindIn(Replace(fruitDocument, colourField, colourField + " missingValueReplacement=\"red\""));
    ASSERT_EQ(heeded.size(), 1U);
    EXPECT_EQ(AdviceWithStandardRule(heeded.front()),
              "Replace missing values in the table before scoring. Or score the document with --rule standard, which "
              "heeds this.");
    const auto other = FindIn(Replace(fruitDocument, "threshold=", "isScorable=\"false\" threshold="));
    ASSERT_EQ(other.size(), 1U);
    EXPECT_EQ(AdviceWithStandardRule(other.front()), other.front().advice);
}

TEST(IgnoredConstructs, AreNoWarnings_WhereAnswersStayAsTheyAre) {
    for (const auto& [piece, replacement] :
         {std::pair{"<DataDictionary>", "<DataDictionary numberOfFields=\"7\">"}, {"</PMML>", "<TreeModel/></PMML>"}}) {
        const std::string text = Replace(fruitDocument, piece, replacement);
        EXPECT_EQ(FindIn(text).size(), 1U);
        EXPECT_THAT(FindWarnings(*TreeOf(text)), IsEmpty());
    }
}

TEST(IgnoredConstructs, AreFoldedIntoOneOfEachKind) {
    std::string text = Replace(fruitDocument, colourField, colourField + " missingValueReplacement=\"red\"");
    std::string fields;
    for (int i = 0; i < 3; ++i)
        fields += "<MiningField name=\"weight\" missingValueReplacement=\"1\"/>";
    text = Replace(text, "<MiningField name=\"weight\"/>", fields);
    EXPECT_THAT(Ignored(text), ElementsAre("17: missingValueReplacement \"red\" of the field \"colour\" is not used: a "
                                           "missing value stays missing. So it is in 3 more places."));
}

TEST(IgnoredConstructs, StandInDocumentOrder) {
    std::string text = Replace(fruitDocument, "threshold=", "isScorable=\"false\" threshold=");
    text = Replace(text, weightField, weightField + " missingValueReplacement=\"1\"");
    text = Replace(text, "<DataDictionary>", "<DataDictionary numberOfFields=\"2\">");
    EXPECT_THAT(Ignored(text),
                ElementsAre("4: numberOfFields \"2\" of the DataDictionary is not the number of its fields: one may be "
                            "missing, or one too many.",
                            "15: isScorable \"false\" of the model is ignored: the model is scored all the same.",
                            "18: missingValueReplacement \"1\" of the field \"weight\" is not used: a missing value "
                            "stays missing."));
}

TEST(IgnoredConstructs, HoldNoControlCharacters) {
    EXPECT_THAT(
        IgnoredOfColour(" missingValueReplacement=\"a&#x9b;1m&#10;b\""),
        ElementsAre("17: missingValueReplacement \"a?1m?b\" of the field \"colour\" is not used: a missing value "
                    "stays missing."));
}

TEST(IgnoredValues, AreThoseOfNumbersThatAreNone) {
    const std::string unused = R"(<DataField name="price" optype="categorical" dataType="integer"><Value value="1"/>
<Value value="N/A"/><Value value="-" property="missing"/><Value value="?" property="valid"/></DataField>
</DataDictionary>)";
    EXPECT_THAT(
        IgnoredWith("</DataDictionary>", unused),
        ElementsAre("15: The value \"N/A\" of the field \"price\" is no number and is not read: no input uses the "
                    "field. So it is in 1 more place."));
    EXPECT_THAT(IgnoredWith("</DataDictionary>", Replace(unused, "integer", "string")), IsEmpty());
}

TEST(IgnoredMissingValues, AreRefusalsAndReplacements) {
    EXPECT_THAT(IgnoredOfColour(" missingValueTreatment=\"returnInvalid\""),
                ElementsAre("17: missingValueTreatment \"returnInvalid\" of the field \"colour\" is not used: a case "
                            "without the value gets an answer all the same."));
    EXPECT_THAT(IgnoredOfColour(" missingValueTreatment=\"asMode\""), IsEmpty());
}

TEST(IgnoredFieldRules, ArePassedOver_WhereNoInputUsesTheField) {
    const std::string unused = R"(<DataField name="price" optype="continuous" dataType="double"/></DataDictionary>)";
    const std::string text = Replace(Replace(fruitDocument, "</DataDictionary>", unused), colourField,
                                     "<MiningField name=\"price\" missingValueReplacement=\"1\"/>" + colourField);
    EXPECT_THAT(Ignored(text), IsEmpty());
    const auto derived = [&text](const std::string& name, const std::string& expression) {
        const std::string fields = "<TransformationDictionary><DerivedField name=\"" + name + "\">" + expression +
                                   "</DerivedField><DerivedField name=\"colour\"><FieldRef field=\"d\"/>"
                                   "</DerivedField></TransformationDictionary><NaiveBayesModel";
        return Ignored(Replace(text, "<NaiveBayesModel", fields));
    };
    const std::string told =
        "17: missingValueReplacement \"1\" of the field \"price\" is not used: a missing value stays missing.";
    EXPECT_THAT(derived("d", "<FieldRef field=\"price\"/>"), ElementsAre(told));
    EXPECT_THAT(derived("d", "<TextIndex textField=\"price\"><Constant>a</Constant></TextIndex>"), ElementsAre(told));
    EXPECT_THAT(derived("unread", "<FieldRef field=\"price\"/>"), IsEmpty());
    EXPECT_THAT(derived("d", "<Extension field=\"price\"/><Constant>1</Constant>"), IsEmpty());
}

TEST(IgnoredInvalidValues, AreRefusals_WhereTheFieldDeclaresItsValues) {
    EXPECT_THAT(IgnoredOfColour(" invalidValueTreatment=\"returnInvalid\""),
                ElementsAre("17: invalidValueTreatment \"returnInvalid\" of the field \"colour\" is not used: a case "
                            "with a value that the field does not declare gets an answer all the same."));
    EXPECT_THAT(IgnoredOfColour(" invalidValueTreatment=\"asIs\""), IsEmpty());
    const std::string unbounded =
        Replace(fruitDocument, weightField, weightField + " invalidValueTreatment=\"returnInvalid\"");
    EXPECT_THAT(Ignored(unbounded), IsEmpty());
    const std::string weight = "<DataField name=\"weight\" optype=\"continuous\" dataType=\"double\"";
    EXPECT_THAT(
        Ignored(Replace(unbounded, weight + "/>", weight + "><Value value=\"-1\" property=\"missing\"/></DataField>")),
        IsEmpty());
}

TEST(IgnoredInvalidValues, AreReplacements) {
    EXPECT_THAT(
        IgnoredOfColour(" invalidValueTreatment=\"asValue\" invalidValueReplacement=\"red\""),
        ElementsAre("17: invalidValueTreatment \"asValue\" of the field \"colour\" is not used: a value that the "
                    "field does not declare stays as it is."));
    // An undeclared category leaves the input out as a missing one does; an undeclared number falls into a bin.
    EXPECT_THAT(IgnoredOfColour(" invalidValueTreatment=\"asMissing\""), IsEmpty());
    EXPECT_THAT(
        IgnoredOfColour(" invalidValueTreatment=\"asMissing\" missingValueReplacement=\"red\""),
        ElementsAre("17: missingValueReplacement \"red\" of the field \"colour\" is not used: a missing value stays "
                    "missing.",
                    "17: invalidValueTreatment \"asMissing\" of the field \"colour\" is not used, nor is "
                    "missingValueReplacement for a value that the field does not declare: it stays as it is."));
    const std::string bounded =
        Replace(fruitDocument, "<DataField name=\"weight\" optype=\"continuous\" dataType=\"double\"/>",
                R"(<DataField name="weight" optype="continuous" dataType="double">
<Interval closure="closedClosed" leftMargin="0"/></DataField>)");
    EXPECT_THAT(Ignored(Replace(bounded, weightField, weightField + " invalidValueTreatment=\"asMissing\"")),
                ElementsAre("19: invalidValueTreatment \"asMissing\" of the field \"weight\" is not used: a value that "
                            "the field does not declare stays as it is."));
}

TEST(IgnoredValidity, IsThatOfInputs) {
    const auto withChild = [](const std::string& child) {
        return Replace(
            fruitDocument, "<DataField name=\"weight\" optype=\"continuous\" dataType=\"double\"/>",
            "<DataField name=\"weight\" optype=\"continuous\" dataType=\"double\">\n" + child + "</DataField>");
    };
    const std::string interval = withChild("<Interval closure=\"closedClosed\" leftMargin=\"0\"/>");
    EXPECT_THAT(Ignored(interval),
                ElementsAre("10: <Interval> of the field \"weight\" does not bound what is scored: a case with a value "
                            "that it makes invalid gets an answer all the same."));
    EXPECT_THAT(Ignored(withChild("<Value value=\"-1\" property=\"invalid\"/>")),
                ElementsAre("10: <Value> of the field \"weight\" does not bound what is scored: a case with a value "
                            "that it makes invalid gets an answer all the same."));
    EXPECT_THAT(Ignored(withChild("<Value value=\"-1\" property=\"missing\"/>")), IsEmpty());
    EXPECT_THAT(Ignored(Replace(interval, weightField, weightField + " invalidValueTreatment=\"asIs\"")), IsEmpty());
}

TEST(IgnoredOutliers, NeedALimit) {
    EXPECT_THAT(IgnoredOfWeight(" outliers=\"asExtremeValues\" lowValue=\"1\" highValue=\"9\""),
                ElementsAre("18: outliers \"asExtremeValues\" of the field \"weight\" is not used: numbers beyond "
                            "lowValue and highValue stay as they are."));
    EXPECT_THAT(IgnoredOfWeight(" outliers=\"asMissingValues\" highValue=\"9\""), testing::SizeIs(1));
    EXPECT_THAT(IgnoredOfWeight(" outliers=\"asMissingValues\""), IsEmpty());
    EXPECT_THAT(IgnoredOfWeight(" outliers=\"asIs\" lowValue=\"1\""), IsEmpty());
    EXPECT_THAT(IgnoredOfColour(" outliers=\"asMissingValues\" highValue=\"9\""), IsEmpty());
}

TEST(IgnoredOptype, IsOneThatTheDataFieldDoesNotHave) {
    EXPECT_THAT(
        IgnoredOfWeight(" optype=\"categorical\""),
        ElementsAre("18: optype \"categorical\" of the field \"weight\" is not used: the optype of its DataField "
                    "counts."));
    EXPECT_THAT(IgnoredOfWeight(" optype=\"continuous\""), IsEmpty());
}

TEST(IgnoredDictionary, IsASecondDeclaration) {
    EXPECT_THAT(IgnoredWith("</DataDictionary>", "<DataField name=\"weight\" dataType=\"string\"/></DataDictionary>"),
                ElementsAre("14: The second declaration of the field \"weight\" is not read: the first one counts."));
}

TEST(IgnoredDictionary, IsNoRightNumberOfFields) {
    EXPECT_THAT(IgnoredWith("<DataDictionary>", "<DataDictionary numberOfFields=\"3\">"), IsEmpty());
}

TEST(IgnoredDictionary, IsASecondOneOfDerivedFields) {
    EXPECT_THAT(
        IgnoredWith("<NaiveBayesModel", "<TransformationDictionary/>\n<TransformationDictionary/>\n<NaiveBayesModel"),
        ElementsAre("16: A further <TransformationDictionary> is not read: the first one counts."));
}

TEST(IgnoredBinning, IsAClosureOnTheLeft_BetweenBins) {
    EXPECT_THAT(IgnoredWith("closure=\"openClosed\" rightMargin", "closure=\"closedOpen\" rightMargin"),
                ElementsAre("39: closure \"closedOpen\" of the input \"weight\" is not used: the number on the margin "
                            "itself belongs to the bin."));
    EXPECT_THAT(IgnoredWith("closure=\"openClosed\" leftMargin", "closure=\"closedOpen\" leftMargin"), IsEmpty());
}

TEST(IgnoredBinning, IsAMarginWithoutABinBeyond) {
    EXPECT_THAT(IgnoredWith("rightMargin=\"150\"", "leftMargin=\"0\" rightMargin=\"150\""),
                ElementsAre("39: leftMargin \"0\" of the input \"weight\" is not used: numbers beyond it fall into the "
                            "bin as well."));
    EXPECT_THAT(IgnoredWith("leftMargin=\"150\"", "leftMargin=\"150\" rightMargin=\"900\""),
                ElementsAre("40: rightMargin \"900\" of the input \"weight\" is not used: numbers beyond it fall into "
                            "the bin as well."));
    EXPECT_THAT(IgnoredWith("rightMargin=\"150\"", "leftMargin=\"-1.7976931348623157e308\" rightMargin=\"150\""),
                IsEmpty());
}

TEST(IgnoredBinning, IsANumberThatIsNotThePosition) {
    EXPECT_THAT(
        IgnoredWith("binValue=\"1\"", "binValue=\"2\""),
        ElementsAre("40: binValue \"2\" of the input \"weight\" is not used: bins are numbered 0, 1, 2 and so on "
                    "as they stand."));
    EXPECT_THAT(IgnoredWith("binValue=\"1\"", "binValue=\"heavy\""), IsEmpty());
}

TEST(IgnoredBinning, IsABinForMissingValuesAndAnotherField) {
    EXPECT_THAT(IgnoredWith("<Discretize field=\"weight\">", "<Discretize field=\"weight\" mapMissingTo=\"0\">"),
                ElementsAre("38: mapMissingTo \"0\" of the input \"weight\" is not used: a missing value leaves the "
                            "input out."));
    EXPECT_THAT(
        IgnoredWith("<Discretize field=\"weight\">", "<Discretize field=\"mass\">"),
        ElementsAre("38: field \"mass\" of the input \"weight\" is not used: the field that the BayesInput names "
                    "is put into the bins."));
}

TEST(IgnoredModelParts, AreTargetPriors) {
    const std::string targets =
        R"(<Targets><Target field="fruit"><TargetValue value="pear"%/></Target></Targets><BayesInputs>)";
    EXPECT_THAT(IgnoredWith("<BayesInputs>", Replace(targets, "%", " priorProbability=\"0.9\"")),
                ElementsAre("21: The priorProbability of the target value \"pear\" is not used: priors come from the "
                            "counts of BayesOutput."));
    EXPECT_THAT(IgnoredWith("<BayesInputs>", Replace(targets, "%", "")), IsEmpty());
}

TEST(IgnoredModelParts, AreOutputsThatScoringDoesNotGive) {
    const auto withOutput = [](const std::string& attributes) {
        return IgnoredWith("<BayesInputs>",
                           "<Output><OutputField name=\"o\" " + attributes + "/></Output><BayesInputs>");
    };
    const std::string message = "21: The output field \"o\" is not computed: only predictions and probabilities are.";
    EXPECT_THAT(withOutput("feature=\"transformedValue\""), ElementsAre(message));
    EXPECT_THAT(withOutput("feature=\"probability\" rank=\"2\""), ElementsAre(message));
    EXPECT_THAT(withOutput("feature=\"probability\" value=\"pear\" rank=\"1\""), IsEmpty());
    EXPECT_THAT(withOutput("feature=\"predictedValue\""), IsEmpty());
    EXPECT_THAT(withOutput(""), IsEmpty());
}

TEST(IgnoredModelParts, AreLocalFieldsThatAnInputSeemsToName) {
    const auto withLocalField = [](const std::string& name) {
        return IgnoredWith("<BayesInputs>", "<LocalTransformations><DerivedField name=\"" + name +
                                                "\"/></LocalTransformations><BayesInputs>");
    };
    EXPECT_THAT(
        withLocalField("weight"),
        ElementsAre("21: The field \"weight\" of LocalTransformations is not read: the input takes the field of "
                    "that name in the dictionaries."));
    EXPECT_THAT(withLocalField("other"), IsEmpty());
}

TEST(IgnoredModelParts, AreAllOutputsButTheLast) {
    EXPECT_THAT(IgnoredWith("<BayesOutput ", "<BayesOutput fieldName=\"fruit\"/><BayesOutput "),
                ElementsAre("57: A BayesOutput in front of another is not used: of several the last one counts."));
}

const std::string notRead = " is not read, and could change the answer.";

TEST(UnknownContent, IsAWarning_WhereverItStands) {
    EXPECT_THAT(IgnoredWith("threshold=", "priorWeight=\"3\" threshold="),
                ElementsAre("15: priorWeight \"3\" of <NaiveBayesModel>" + notRead));
    EXPECT_THAT(IgnoredWith("<Value value=\"red\"/>", "<Value value=\"red\"/><Intervall/>"),
                ElementsAre("6: <Intervall> in <DataField>" + notRead));
    EXPECT_THAT(IgnoredWith("<DataDictionary>", "<Smoothing alpha=\"1\"/><DataDictionary>"),
                ElementsAre("4: <Smoothing> in <PMML>" + notRead));
    EXPECT_THAT(IgnoredWith("<BayesOutput fieldName=\"fruit\">", "<BayesOutput fieldName=\"fruit\"><Foo/>"),
                ElementsAre("57: <Foo> in <BayesOutput>" + notRead));
    EXPECT_THAT(IgnoredWith("<BayesInputs>", "<Targets><Target rescaleFactor=\"2\"/></Targets><BayesInputs>"),
                ElementsAre("21: rescaleFactor \"2\" of <Target>" + notRead));
    EXPECT_THAT(IgnoredWith("<Discretize ", "<Discretize binning=\"2\" "),
                ElementsAre("38: binning \"2\" of <Discretize>" + notRead));
    EXPECT_TRUE(FindIn(Replace(fruitDocument, "threshold=", "priorWeight=\"3\" threshold=")).front().isWarning);
}

TEST(UnknownContent, IsNotThatOfModelsThatAreNotRead) {
    EXPECT_THAT(IgnoredWith("</PMML>", "<TreeModel other=\"1\"><Node/></TreeModel></PMML>"),
                ElementsAre("64: <TreeModel> is not read: only a NaiveBayesModel is."));
    EXPECT_THAT(IgnoredWith("</PMML>", "<NaiveBayesModel other=\"1\"/></PMML>"),
                ElementsAre("64: A further <NaiveBayesModel> is not read: only the first NaiveBayesModel is."));
}

TEST(UnknownContent, IsAModelOrAnInput_WhereNoOtherWarningTellsOfIt) {
    EXPECT_THAT(IgnoredWith("<DataDictionary>", "<BayesInputs/><DataDictionary>"),
                ElementsAre("4: <BayesInputs> in <PMML>" + notRead));
    EXPECT_THAT(IgnoredWith("<BayesInputs>", "<Extension><NaiveBayesModel/></Extension><BayesInputs>"),
                ElementsAre("21: <NaiveBayesModel> in <Extension>" + notRead));
}

TEST(UnknownContent, IsThatOfEverySubModelOfASet) {
    const std::string set = Replace(fruitDocument, "threshold=", "algorithmName=\"SelfLearning\" threshold=");
    EXPECT_THAT(Ignored(Replace(set, "</PMML>", "<NaiveBayesModel other=\"1\"/></PMML>")),
                ElementsAre("64: other \"1\" of <NaiveBayesModel>" + notRead));
}

TEST(IgnoredModelParts, AreFunctionsOtherThanClassification) {
    EXPECT_THAT(IgnoredWith("functionName=\"classification\"", "functionName=\"regression\""),
                ElementsAre("15: functionName \"regression\" of the model is ignored: the model is scored as a "
                            "classification."));
    EXPECT_THAT(IgnoredWith("functionName=\"classification\"", ""), IsEmpty());
}

TEST(IgnoredModels, AreTheSecondAndThoseOfOtherKinds) {
    EXPECT_THAT(IgnoredWith("</PMML>", "<TreeModel/>\n<NaiveBayesModel/></PMML>"),
                ElementsAre("64: <TreeModel> is not read: only a NaiveBayesModel is.",
                            "65: A further <NaiveBayesModel> is not read: only the first NaiveBayesModel is."));
    EXPECT_TRUE(FindIn(Replace(fruitDocument, "</PMML>", "<NaiveBayesModel/></PMML>")).front().isWarning);
    EXPECT_THAT(IgnoredWith("threshold=", "algorithmName=\"SelfLearning\" threshold="), IsEmpty());
    std::string set = Replace(fruitDocument, "threshold=", "algorithmName=\"SelfLearning\" threshold=");
    EXPECT_THAT(Ignored(Replace(set, "</PMML>", "<NaiveBayesModel/></PMML>")), IsEmpty());
}

TEST(IgnoredModels, AreSetsOfModelsAroundTheOneThatIsRead) {
    std::string text =
        Replace(fruitDocument, "<NaiveBayesModel", "<MiningModel><Segmentation><Segment><NaiveBayesModel");
    text = Replace(text, "</NaiveBayesModel>",
                   "</NaiveBayesModel></Segment><Segment><TreeModel/></Segment></Segmentation></MiningModel>");
    EXPECT_THAT(Ignored(text),
                ElementsAre("15: <MiningModel> around the NaiveBayesModel is not read: the model answers every case "
                            "alone, whatever the segments say.",
                            "63: <TreeModel> is not read: only a NaiveBayesModel is."));
}

TEST(IgnoredModels, AreASetOfOneModel_WhichIsAWarningWhereItHasRulesOfItsOwn) {
    const auto findAround = [](const std::string& before, const std::string& predicate) {
        const std::string text =
            Replace(fruitDocument, "<NaiveBayesModel",
                    "<MiningModel>" + before + "<Segmentation><Segment>" + predicate + "<NaiveBayesModel");
        const auto found =
            FindIn(Replace(text, "</NaiveBayesModel>", "</NaiveBayesModel></Segment></Segmentation></MiningModel>"));
        EXPECT_EQ(found.size(), 1U);
        return std::pair(found.front().isWarning, found.front().message);
    };
    const std::string around = "<MiningModel> around the NaiveBayesModel is not read: ";
    EXPECT_THAT(findAround("<MiningSchema><MiningField name=\"colour\"/></MiningSchema>", "<True/>"),
                testing::Pair(false, around + "the model answers every case by itself."));
    const auto withRules = testing::Pair(true, around + "what it says of fields, the target or outputs is not used.");
    EXPECT_THAT(findAround("<Output/>", "<True/>"), withRules);
    EXPECT_THAT(
        findAround("<MiningSchema><MiningField name=\"colour\" missingValueReplacement=\"red\"/></MiningSchema>",
                   "<True/>"),
        withRules);
    EXPECT_THAT(findAround("<Other/>", "<True/>"),
                testing::Pair(true, around + "the model answers every case alone, whatever the segments say."));
    EXPECT_THAT(findAround("", "<False/>"),
                testing::Pair(true, around + "the model answers every case alone, whatever the segments say."));
}

}  // namespace
}  // namespace nbscore::test

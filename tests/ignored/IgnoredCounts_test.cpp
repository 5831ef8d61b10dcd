#include "ignored/Warnings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/FruitDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A model with one input of two rows of counts, and the declaration of its field.
std::string Counted(const std::string& declarations, const std::string& value = "N/A") {
    return "<PMML>" + declarations +
           "<NaiveBayesModel><BayesInputs><BayesInput fieldName='n'>\n<PairCounts value='1'/>\n" +
           "<PairCounts value='" + value + "'/></BayesInput></BayesInputs></NaiveBayesModel></PMML>";
}

std::string Field(const std::string& attributes, const std::string& values = "") {
    return "<DataDictionary><DataField name='n' " + attributes + ">" + values + "</DataField></DataDictionary>";
}

const std::string noNumber =
    "3: The value \"N/A\" in PairCounts of the field \"n\" is no number, as the field's values are: no case has it, "
    "and "
    "of several such rows the last one stands for all.";

TEST(CountsOfNoNumber, AreThoseOfFieldsThatLearnNumbers) {
    const std::string learns = "optype='categorical' dataType='integer'";
    EXPECT_THAT(Warnings(Counted(Field(learns))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field("optype='ordinal' dataType='double'"))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field(learns, "<Value value='x' property='missing'/>"))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted("<TransformationDictionary><DerivedField name='n' " + learns +
                                 "/></TransformationDictionary>")),
                ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field(learns), " 2.50e1 ")), IsEmpty());
}

TEST(CountsOfNoNumber, AreNone_WhereTheFieldLearnsNoNumbers) {
    EXPECT_THAT(Warnings(Counted(Field("optype='categorical' dataType='string'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("optype='continuous' dataType='double'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("dataType='double'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("optype='categorical' dataType='double'", "<Value value='1'/>"))), IsEmpty())
        << "such a document is refused";
    const std::string learning = "<DataField name='n' optype='categorical' dataType='double'/>";
    EXPECT_THAT(Warnings(Counted("<DataDictionary><DataField name='n' optype='categorical' dataType='string'/>" +
                                 learning + "</DataDictionary>")),
                ElementsAre("1: The second declaration of the field \"n\" is not read: the first one counts."))
        << "of two declarations the first counts";
}

const std::string undeclared = " is not used: the target's DataField declares no such valid value.";
const std::string doubleRow = " has more than one PairCounts: only the last one is used.";
const std::string doubleCount = " is counted more than once in one TargetValueCounts: only the last count is used.";

std::string Count(const std::string& value, const std::string& count = "1") {
    return "<TargetValueCount value='" + value + "' count='" + count + "'/>";
}

std::string Row(const std::string& value, const std::string& counts) {
    return "\n<PairCounts value='" + value + "'><TargetValueCounts>" + counts + "</TargetValueCounts></PairCounts>";
}

std::string Output(const std::string& counts) {
    return "\n<BayesOutput fieldName='t'><TargetValueCounts>" + counts + "</TargetValueCounts></BayesOutput>";
}

/// A model of one input, with each row of it and the output on a line of its own, from line 2.
std::string Model(const std::string& rows, const std::string& outputs = "", const std::string& attributes = "") {
    return "<NaiveBayesModel " + attributes + "><BayesInputs><BayesInput fieldName='x'>" + rows +
           "</BayesInput></BayesInputs>" + outputs + "</NaiveBayesModel>";
}

std::string Dictionary(const std::string& target, const std::string& input = "dataType='string'") {
    return "<DataDictionary><DataField name='t' optype='categorical' " + target +
           "</DataField><DataField name='x' optype='categorical' " + input + "/></DataDictionary>";
}

/// Of a target with the texts "a" and "b".
std::vector<std::string> WarningsWithTexts(const std::string& models) {
    return Warnings("<PMML>" + Dictionary("dataType='string'><Value value='a'/><Value value='b'/>") + models +
                    "</PMML>");
}

std::vector<std::string> WarningsWithNumbers(const std::string& models) {
    return Warnings("<PMML>" +
                    Dictionary("dataType='integer'><Value value='0'/><Value value=' 1.0'/>", "dataType='double'") +
                    models + "</PMML>");
}

TEST(CountsOfUndeclaredTargetValues, AreThoseOfInputsAndOutput) {
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("a") + Count("c")), Output(Count("b")))),
                ElementsAre("2: The count of the target value \"c\"" + undeclared));
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("a")), Output(Count("b") + Count("d")))),
                ElementsAre("3: The count of the target value \"d\"" + undeclared));
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("c")), Output(Count("a") + Count("c", "-0.5")))),
                ElementsAre("2: The count of the target value \"c\"" + undeclared + " So it is in 1 more place."));
}

TEST(CountsOfUndeclaredTargetValues, AreTextsThatDifferInAByte) {
    EXPECT_THAT(WarningsWithTexts(Model("", Output(Count("a ") + Count("B")))),
                ElementsAre("2: The count of the target value \"a \"" + undeclared + " So it is in 1 more place."));
}

TEST(CountsOfUndeclaredTargetValues, AreOtherNumbersAndTextsThatAreNone) {
    EXPECT_THAT(WarningsWithNumbers(Model("", Output(Count("-0") + Count("+1") + Count("2") + Count("one")))),
                ElementsAre("2: The count of the target value \"2\"" + undeclared + " So it is in 1 more place."));
}

TEST(CountsOfUndeclaredTargetValues, AreThoseOfValuesDeclaredInvalid) {
    EXPECT_THAT(Warnings("<PMML>" +
                         Dictionary("dataType='string'><Value value='a' property='valid'/><Value value='b' "
                                    "property='invalid'/>") +
                         Model("", Output(Count("a") + Count("b"))) + "</PMML>"),
                ElementsAre("2: The count of the target value \"b\"" + undeclared));
}

TEST(CountsOfUndeclaredTargetValues, AreThoseOfAllSubModels) {
    const std::string sound = Model(Row("u", Count("a")), Output(Count("a")), "algorithmName='SelfLearning'");
    EXPECT_THAT(WarningsWithTexts(sound + Model(Row("u", Count("c")), Output(Count("b")))),
                ElementsAre("4: The count of the target value \"c\"" + undeclared));
}

TEST(CountsOfUndeclaredTargetValues, AreNone_WhereTheyChangeNothing) {
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("c", "0")), Output(Count("a") + Count("c", " 0.0")))),
                IsEmpty());
    EXPECT_THAT(Warnings("<PMML>" + Dictionary("dataType='string'>") + Model("", Output(Count("c"))) + "</PMML>"),
                IsEmpty())
        << "such a document is refused";
    EXPECT_THAT(WarningsWithTexts(Model("", Output(Count("c")) + Output(Count("a")))),
                ElementsAre("2: A BayesOutput in front of another is not used: of several the last one counts."));
}

TEST(CountsOfUndeclaredTargetValues, PointAtTheRuleThatMayKnowThem) {
    const auto found = FindIgnoredConstructs(*TreeOf("<PMML>" + Dictionary("dataType='string'><Value value='a'/>") +
                                                     Model("", Output(Count(" a"))) + "</PMML>"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found.front().isHeededByStandard);
}

TEST(ValuesOfSeveralPairCounts, AreThoseOfOneInput) {
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("a")) + Row("v", Count("a")) + Row("u", Count("b")))),
                ElementsAre("4: The value \"u\" of the input \"x\"" + doubleRow));
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", "") + Row("u ", ""))), IsEmpty());
    const std::string twoInputs = Row("u", "") + "</BayesInput><BayesInput fieldName='x'>" + Row("u", "");
    EXPECT_THAT(WarningsWithTexts(Model(twoInputs)), IsEmpty()) << "inputs of one field each have their own counts";
}

TEST(ValuesOfSeveralPairCounts, AreNumbersHoweverTheyAreSpelt) {
    EXPECT_THAT(WarningsWithNumbers(Model(Row("2", "") + Row(" 2.0 ", "") + Row("3", "") + Row("2e0", ""))),
                ElementsAre("3: The value \" 2.0 \" of the input \"x\"" + doubleRow + " So it is in 1 more place."));
}

TEST(ValuesOfSeveralPairCounts, AreBins) {
    const std::string again = "<PairCounts value=\" 1\"/></BayesInput>\n    </BayesInputs>";
    const std::string document = Replace(fruitDocument, "</BayesInput>\n    </BayesInputs>", again);
    const std::string warning = "55: The value \" 1\" of the input \"weight\"" + doubleRow;
    EXPECT_THAT(Warnings(document), ElementsAre(warning));
    EXPECT_THAT(Warnings(Replace(document, "dataType=\"double\"", "dataType=\"string\"")), ElementsAre(warning))
        << "bins have numbers, whatever the field holds";
}

TEST(TargetValuesCountedTwice, AreThoseOfOneList) {
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("a") + Count("b") + Count("a", "2")) + Row("v", Count("a")),
                                        Output(Count("a") + Count("b")))),
                ElementsAre("2: The target value \"a\"" + doubleCount));
    EXPECT_THAT(WarningsWithTexts(Model(Row("u", Count("a")), Output(Count("b") + Count("b")))),
                ElementsAre("3: The target value \"b\"" + doubleCount));
    EXPECT_THAT(WarningsWithNumbers(Model("", Output(Count("1") + Count("0") + Count("1.0")))),
                ElementsAre("2: The target value \"1.0\"" + doubleCount));
}

TEST(TargetValuesCountedTwice, AreToldFirstWhereTheOutputStandsFirst) {
    const std::string outputFirst = "<NaiveBayesModel>" + Output(Count("a") + Count("a")) +
                                    "<BayesInputs><BayesInput fieldName='x'>" + Row("u", Count("b") + Count("b")) +
                                    "</BayesInput></BayesInputs></NaiveBayesModel>";
    EXPECT_THAT(WarningsWithTexts(outputFirst),
                ElementsAre("2: The target value \"a\"" + doubleCount + " So it is in 1 more place."));
}

}  // namespace
}  // namespace nbscore::test
